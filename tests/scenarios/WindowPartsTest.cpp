#include "tests/engine/SampleMedia.h"
#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"
#include "workbench/app/effects/EffectAdder.h"
#include "workbench/app/effects/EffectListPane.h"
#include "workbench/app/files/ExportDialog.h"
#include "workbench/app/files/MediaImporter.h"
#include "workbench/app/session/PlainTexts.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/app/start/BatchJobs.h"
#include "workbench/app/window/DialogPlace.h"
#include "workbench/app/window/MessageBar.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <fstream>

namespace workbench
{
namespace
{

using Severity = oribund::MessageSink::Severity;

TEST(EffectList, FindsByEveryWordAndTheArrowsWalkWhatIsFound)
{
    EffectCatalogue catalogue;
    for (const char* title : {"Soft glow", "Glow", "Box blur", "Blur", "Afterglow"}) {
        EffectDescription effect;
        effect.title = effect.service = title;
        effect.category = "Light";
        catalogue.add(effect);
    }
    EffectListPane list(catalogue);
    std::vector<std::string> chosen;
    int handedBack = 0;
    list.chosen = [&](const std::string& service) { chosen.push_back(service); };
    list.done = [&] { ++handedBack; };
    QLineEdit& field = list.searchField();
    const auto find = [&](const char* search, std::initializer_list<Qt::Key> keys) {
        field.clear();
        QTest::keyClicks(&field, search);
        for (const Qt::Key key : keys)
            QTest::keyClick(&field, key);
    };
    find("BLUR", {Qt::Key_Return}); // the title that is just that comes first
    find("ght glo soft", {Qt::Key_Enter});
    find("glow", {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}); // behind Glow and Afterglow
    find("no such effect", {Qt::Key_Return});
    EXPECT_EQ(chosen, (std::vector<std::string>{"Blur", "Soft glow", "Soft glow"}));
    EXPECT_EQ(handedBack, 3) << "what finds nothing stays to be mended";
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(handedBack, 4);
    EXPECT_GT(list.tree().topLevelItem(0)->childCount(), 0) << "the categories are back";
}

TEST(Messages, WhatOffersSomethingIsSeenAtOnceAndNothingThatWaitsIsLost)
{
    MessageBar bar;
    const auto* const timer = bar.findChild<QTimer*>();
    auto* const count = bar.findChild<QPushButton*>(QStringLiteral("count"));
    auto* const close = bar.findChild<QToolButton*>();
    bar.show(QStringLiteral("failed"), Severity::Error);
    bar.show(QStringLiteral("minor"), Severity::Warning);
    EXPECT_EQ(bar.text(), QStringLiteral("failed"));
    bar.show(QStringLiteral("off"), Severity::Warning, {QStringLiteral("Try again"), [] {}});
    EXPECT_EQ(bar.text(), QStringLiteral("off"));
    EXPECT_FALSE(timer->isActive()) << "the offer stays";
    EXPECT_EQ(count->text(), QStringLiteral("2 more"));
    count->click();
    EXPECT_EQ(bar.text(), QStringLiteral("failed"));
    close->click();
    EXPECT_EQ(bar.text(), QStringLiteral("minor"));
    for (int i = 0; i < 100; ++i)
        bar.show(QString::number(i), Severity::Warning);
    for (int i = 0; i < 100 && bar.text() != QStringLiteral("off"); ++i)
        count->click();
    EXPECT_EQ(bar.text(), QStringLiteral("off")) << "not even a flood drives it away";
}

TEST(Messages, ComeOneByOneAndAllButErrorsGoByThemselves)
{
    MessageBar bar;
    QTimer* const timer = bar.findChild<QTimer*>();
    EXPECT_TRUE(bar.isHidden());
    bar.show(QStringLiteral("said"), Severity::Information);
    const QLabel* const sign = bar.findChild<QLabel*>(QStringLiteral("sign"));
    EXPECT_TRUE(sign->isHidden());
    bar.show(QStringLiteral("one"), Severity::Warning);
    EXPECT_EQ(bar.text(), QStringLiteral("one")) << "what was only said gives way";
    EXPECT_FALSE(sign->isHidden());
    bar.show(QStringLiteral("two"), Severity::Error);
    bar.show(QStringLiteral("one"), Severity::Error);
    EXPECT_EQ(bar.text(), QStringLiteral("two"));
    EXPECT_FALSE(timer->isActive()) << "an error stays";
    auto* close = bar.findChild<QToolButton*>();
    close->click();
    ASSERT_TRUE(timer->isActive());
    timer->start(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.isHidden(); }));
    bar.show(QStringLiteral("three"), Severity::Error);
    close->click();
    EXPECT_TRUE(bar.isHidden());
    for (int i = 0; i < 1000; ++i)
        bar.show(QString::number(i), Severity::Warning);
    int closed = 0;
    for (; !bar.isHidden() && closed < 100; ++closed)
        close->click();
    EXPECT_LT(closed, 50) << "a flood of messages is cut short";
}

TEST(Labels, ShowNamesAsTheyAre)
{
    QMessageBox box;
    box.setText(QStringLiteral("Save <img src='/dev/zero'> & <b>more</b>?"));
    box.setInformativeText(QStringLiteral("<i>Without</i>"));
    box.ensurePolished();
    box.show();
    for (const QLabel* label : box.findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
    QLabel label(plainTip(QStringLiteral("a & b\n<b>c</b>")));
    QTextDocument tip;
    tip.setHtml(label.text());
    EXPECT_EQ(tip.toPlainText(), QStringLiteral("a & b\n<b>c</b>"));
}

TEST(Dialogs, LeaveThePictureFreeAsFarAsTheScreenGoes)
{
    const QRect window(80, 60, 1440, 880);
    const QRect picture(330, 100, 760, 430);
    const QSize size(550, 440);
    for (const QRect& screen : {QRect(0, 0, 1600, 1000), QRect(0, 0, 3000, 1000)}) {
        const QRect place(DialogPlace::placeFor(size, window, picture, screen), size);
        EXPECT_TRUE(screen.contains(place));
        EXPECT_FALSE(place.intersects(picture));
    }
    const QRect cramped(0, 0, 1100, 540);
    EXPECT_TRUE(cramped.contains(QRect(DialogPlace::placeFor(size, window, picture, cramped), size)));
}

TEST(ExportQuestions, OnlyWhatCanBeExportedIsAccepted)
{
    const QTemporaryDir folder;
    const auto in = [&](const char* name) { return (folder.path() + QLatin1Char('/')).toStdString() + name; };
    for (const char* name : {"My.film.wav", "old.mp4"})
        std::ofstream(in(name)) << "x";
    ExportPreset film;
    film.extension = "mp4";
    ExportPreset sound;
    sound.extension = "wav";
    ExportDialog::Suggestion suggestion;
    suggestion.folder = folder.path();
    suggestion.name = QStringLiteral("My.film");
    suggestion.frames = 100;
    suggestion.used = {in("My.film.wav")};
    ExportDialog dialog(suggestion, {film, sound});
    QPushButton* button = nullptr;
    for (QPushButton* one : dialog.findChildren<QPushButton*>())
        button = one->text() == QStringLiteral("Export") ? one : button;
    const auto entries = dialog.findChildren<QLineEdit*>();
    QLineEdit* const path = *std::find_if(entries.begin(), entries.end(), [](const QLineEdit* entry) {
        return entry->accessibleName() == QStringLiteral("File");
    });
    QLineEdit* const to = *std::find_if(entries.begin(), entries.end(), [](const QLineEdit* entry) {
        return entry->text() == QStringLiteral("00:00:04:00");
    });
    EXPECT_TRUE(button->isEnabled());
    EXPECT_EQ(dialog.request().path, in("My.film-2.mp4")) << "in no format the name of a file in use";
    EXPECT_EQ(dialog.request().to, 99);
    EXPECT_EQ(dialog.focusWidget(), path) << "what is typed at once is the name";
    QTest::keyClicks(path, "other");
    EXPECT_EQ(dialog.request().path, in("other.mp4"));
    path->undo();
    dialog.findChild<QComboBox*>()->setCurrentIndex(1);
    EXPECT_EQ(dialog.request().path, in("My.film-2.wav"));
    to->setText(QStringLiteral("2:00"));
    EXPECT_EQ(dialog.request().to, 49);
    for (const char* bad : {"0", "x", ""}) {
        to->setText(QString::fromLatin1(bad));
        EXPECT_FALSE(button->isEnabled()) << bad;
    }
    to->setText(QStringLiteral("1:00:00"));
    EXPECT_EQ(dialog.request().to, 99) << "not beyond the end";
    for (const char* bad : {"film.xyz", "none/film.mp4", "My.film.wav"}) {
        path->setText(QString::fromLatin1(bad));
        EXPECT_FALSE(button->isEnabled()) << bad;
    }

    // A file that is there is replaced only by who says so.
    path->setText(QStringLiteral("old.mp4"));
    EXPECT_TRUE(button->isEnabled());
    dialog.show();
    const auto answer = [&](QMessageBox::StandardButton answered) {
        QTimer::singleShot(0, [answered] {
            qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(answered)->click();
        });
        button->click();
        return dialog.isVisible();
    };
    EXPECT_TRUE(answer(QMessageBox::Cancel));
    EXPECT_FALSE(answer(QMessageBox::Yes));
    EXPECT_EQ(dialog.request().existing, ExportTarget::Existing::Replace);
    EXPECT_EQ(dialog.request().path, in("old.mp4"));
}

/** What the program does without its window. */
class WithoutWindow : public testing::Test
{
protected:
    oribund::test::TestHost host;
    Workspace workspace{testEngine()};
};

TEST_F(WithoutWindow, ExportsTheRangeThatWasAskedFor)
{
    CommandLine line;
    line.files = {SampleMedia::clip()};
    line.exportPath = (SampleMedia::folder() / "range.mp4").string();
    line.from = 1.0;
    line.to = 2.0;
    EXPECT_EQ(exportFile(workspace, line), 0);
    EXPECT_EQ(workspace.engine()->probeMedia(line.exportPath).info.value_or(MediaInfo()).frames, 25);
    Workspace other(testEngine());
    line.from = 100.0;
    line.to.reset();
    EXPECT_EQ(exportFile(other, line), 1);
    EXPECT_EQ(host.shown.size(), 1u);
    // A colon is no address, and what the edit is made of stays, whatever is allowed.
    const std::string copy = (SampleMedia::folder() / "copy: one.mp4").string();
    std::filesystem::copy_file(SampleMedia::clip(), copy);
    Workspace last(testEngine());
    line = {};
    line.files = {SampleMedia::clip()};
    line.exportPath = copy;
    EXPECT_EQ(exportFile(last, line), 1) << "it exists";
    line.replaceExisting = true;
    line.to = 0.4;
    Workspace again(testEngine());
    EXPECT_EQ(exportFile(again, line), 0);
    EXPECT_EQ(workspace.engine()->probeMedia(copy).info.value_or(MediaInfo()).frames, 10);
    line.files = {copy};
    Workspace used(testEngine());
    EXPECT_EQ(exportFile(used, line), 1);
    EXPECT_EQ(workspace.engine()->probeMedia(copy).info.value_or(MediaInfo()).frames, 10);
}

TEST_F(WithoutWindow, EffectsThatMustNotBeUsedAreRefused)
{
    EffectAdder adder(workspace);
    adder.add("brightness");
    ASSERT_TRUE(MediaImporter::importNow(workspace, {SampleMedia::clip()}));
    adder.add("no.such.effect");
    adder.add("avfilter.zmq");
    EXPECT_EQ(host.shown.size(), 3u);
    EXPECT_TRUE(workspace.targetSegment()->effects.empty());
    adder.add("brightness");
    ASSERT_EQ(workspace.targetSegment()->effects.size(), 1u);
    // One that nobody vouches for is tried first, in a process of its own.
    adder.add("boxblur");
    EXPECT_EQ(workspace.targetSegment()->effects.size(), 1u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !adder.isBusy(); }, 15000));
    EXPECT_EQ(workspace.targetSegment()->effects.size() + host.shown.size(), 5u);
}

} // namespace
} // namespace workbench
