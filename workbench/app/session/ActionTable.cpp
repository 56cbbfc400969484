#include "workbench/app/session/ActionTable.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace workbench
{

using oribund::qt::Glyph;
using oribund::qt::glyphIcon;

namespace
{

struct Entry {
    Command command;
    const char* menu;
    const char* text;
    const char* keys; ///< in portable form, several separated by spaces
    std::optional<Glyph> glyph;
    bool separator = false; ///< before it
};

const Entry kEntries[] = {
    {Command::New, "&File", "&New project", "Ctrl+N", {}},
    {Command::Open, "&File", "&Open media or project\u2026", "Ctrl+O", Glyph::Open},
    {Command::Save, "&File", "&Save", "Ctrl+S", Glyph::Save, true},
    {Command::SaveAs, "&File", "Save &as\u2026", "Ctrl+Shift+S", {}},
    {Command::FindMedia, "&File", "Find missing &media\u2026", "", {}, true},
    {Command::Export, "&File", "&Export\u2026", "Ctrl+E", Glyph::Export, true},
    {Command::Quit, "&File", "&Quit", "Ctrl+Q", {}, true},
    {Command::Undo, "&Edit", "&Undo", "Ctrl+Z", Glyph::Undo},
    {Command::Redo, "&Edit", "&Redo", "Ctrl+Shift+Z Ctrl+Y", Glyph::Redo},
    {Command::Split, "&Edit", "&Split at the current time", "B", Glyph::Split, true},
    {Command::Remove, "&Edit", "Re&move segment", "Shift+Delete", Glyph::Trash},
    {Command::Delete, "&Edit", "&Delete", "Delete", {}},
    {Command::SelectNext, "&Edit", "Select &next segment", "Ctrl+Right", {}, true},
    {Command::SelectPrevious, "&Edit", "Select pre&vious segment", "Ctrl+Left", {}},
    {Command::Play, "&Transport", "&Play", "Space", Glyph::Play},
    {Command::StepBack, "&Transport", "One frame &back", "Left", Glyph::StepBack, true},
    {Command::StepForward, "&Transport", "One frame &forward", "Right", Glyph::StepForward},
    {Command::SecondBack, "&Transport", "One second back", "Shift+Left", {}},
    {Command::SecondForward, "&Transport", "One second forward", "Shift+Right", {}},
    {Command::PreviousCut, "&Transport", "P&revious cut", "Up", Glyph::PreviousCut, true},
    {Command::NextCut, "&Transport", "&Next cut", "Down", Glyph::NextCut},
    {Command::ToStart, "&Transport", "To the &start", "Home", Glyph::ToStart, true},
    {Command::ToEnd, "&Transport", "To the &end", "End", Glyph::ToEnd},
    {Command::AddCue, "&Cues", "&Add cue", "M", Glyph::Plus},
    {Command::PreviousCue, "&Cues", "&Previous cue", "Alt+Left", {}, true},
    {Command::NextCue, "&Cues", "&Next cue", "Alt+Right", {}},
    {Command::RenameCue, "&Cues", "&Rename cue\u2026", "Shift+M", {}, true},
    {Command::CueColour, "&Cues", "&Colour", "", {}},
    {Command::DescribeCue, "&Cues", "&Describe cue", "Ctrl+M", {}},
    {Command::RemoveCue, "&Cues", "De&lete cue", "Alt+Delete", Glyph::Trash},
    {Command::PreviousKeyframe, "&Keyframes", "&Previous keyframe", ",", {}},
    {Command::NextKeyframe, "&Keyframes", "&Next keyframe", ".", {}},
    {Command::AddKeyframes, "&Keyframes", "&Add to all animated values", "K", {}, true},
    {Command::RemoveKeyframes, "&Keyframes", "&Remove selected, or those here", "Shift+K", {}},
    {Command::SelectKeyframes, "&Keyframes", "&Select all", "Ctrl+A", {}, true},
    {Command::DeselectKeyframes, "&Keyframes", "&Deselect all", "Ctrl+Shift+A", {}},
    {Command::CopyKeyframes, "&Keyframes", "&Copy", "Ctrl+C", {}, true},
    {Command::PasteKeyframes, "&Keyframes", "Pas&te at the current time", "Ctrl+V", {}},
    {Command::KeyframesEarlier, "&Keyframes", "&Move selected a frame earlier", "Ctrl+Shift+Left", {}, true},
    {Command::KeyframesLater, "&Keyframes", "Move selected a frame &later", "Ctrl+Shift+Right", {}},
    {Command::ZoomIn, "&View", "Zoom &in", "Ctrl++ Ctrl+=", Glyph::Plus},
    {Command::ZoomOut, "&View", "Zoom &out", "Ctrl+-", Glyph::Minus},
    {Command::ZoomAll, "&View", "Show &all", "Ctrl+0", {}},
    {Command::ShowHandles, "&View", "&Handles in the picture", "H", {}, true},
    {Command::FindEffect, "Effect&s", "&Find an effect\u2026", "Ctrl+F", Glyph::Search},
    {Command::RetryEffects, "Effect&s", "&Try bypassed effects again", "", Glyph::Reset},
};

} // namespace

ActionTable::ActionTable(QWidget& window, const std::map<Command, Handler>& handlers)
{
    for (const Entry& entry : kEntries) {
        const auto handler = handlers.find(entry.command);
        if (handler == handlers.end())
            continue;
        auto* action = new QAction(QString::fromUtf8(entry.text), &window);
        QList<QKeySequence> keys;
        for (const QString& key : QString::fromLatin1(entry.keys).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            keys.append(QKeySequence(key, QKeySequence::PortableText));
        action->setShortcuts(keys);
        if (entry.glyph)
            action->setIcon(glyphIcon(*entry.glyph));
        QString tip = action->text().remove(QLatin1Char('&'));
        if (!keys.isEmpty())
            tip += QStringLiteral(" (%1)").arg(keys.front().toString(QKeySequence::NativeText));
        action->setToolTip(tip);
        QObject::connect(action, &QAction::triggered, &window, handler->second);
        window.addAction(action);
        actions_[entry.command] = action;
    }
}

void ActionTable::fillMenus(QMenuBar& bar) const
{
    QMenu* menu = nullptr;
    const char* title = "";
    for (const Entry& entry : kEntries) {
        const auto found = actions_.find(entry.command);
        if (found == actions_.end())
            continue;
        if (qstrcmp(title, entry.menu) != 0) {
            title = entry.menu;
            menu = bar.addMenu(QString::fromUtf8(title));
        } else if (entry.separator) {
            menu->addSeparator();
        }
        menu->addAction(found->second);
    }
}

} // namespace workbench
