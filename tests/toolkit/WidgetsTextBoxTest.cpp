#include "WidgetsSupport.h"

#include "oribund/host/toolkit/entries/ValTextBox.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

class TextBoxes : public testing::Test
{
protected:
    TextBoxes()
    {
        box = desk.add<ValTextBox>();
        other = desk.add<TextBox>(0, 40);
        box->setDataAdaptor(adaptor);
    }

    Kt::Ptr<StoreAdaptor<WString>> adaptor = Kt::makePtr<StoreAdaptor<WString>>(L"12");
    Desk desk;
    ValTextBox* box = nullptr;
    TextBox* other = nullptr;
};

TEST_F(TextBoxes, EnterOrTheNextEntryCommitsAndEscapeThrowsAway)
{
    box->takeFocus();
    other->takeFocus();
    EXPECT_TRUE(adaptor->requests.empty()) << "nothing has changed";
    box->takeFocus();
    desk.type(L"34x");
    desk.key(Key::Backspace);
    EXPECT_EQ(box->getShownText(), L"34");
    EXPECT_EQ(box->getText(), L"12") << "not the value yet";
    desk.key(Key::Enter);
    EXPECT_EQ(box->getText(), L"34");
    desk.key(Key::Enter);
    EXPECT_EQ(adaptor->kinds(), ".");
    desk.type(L"7");
    other->takeFocus();
    EXPECT_EQ(adaptor->value, L"7");
    box->takeFocus();
    desk.type(L"99");
    EXPECT_TRUE(desk.key(Key::Escape));
    EXPECT_EQ(box->getShownText(), L"7");
    EXPECT_FALSE(desk.key(Key::Escape)) << "it is for others now";
    EXPECT_EQ(adaptor->kinds(), "..");
}

TEST_F(TextBoxes, ARefusedOrRewrittenTextIsShownAsTheAdaptorHasIt)
{
    box->takeFocus();
    adaptor->refuses = true;
    EXPECT_FALSE(box->userCommit(L"abc"));
    EXPECT_EQ(box->getShownText(), L"12");

    adaptor->refuses = false;
    adaptor->convert = [](const WString& text) { return text == L"13.00" ? WString(L"13") : WString(L"12"); };
    EXPECT_TRUE(box->userCommit(L"13.00"));
    EXPECT_EQ(box->getShownText(), L"13");
    adaptor->value = L"12";
    adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_TRUE(box->userCommit(L"12.00"));
    EXPECT_EQ(box->getShownText(), L"12") << "also when the value is what it was";
}

TEST_F(TextBoxes, ADisabledOrReadOnlyBoxTakesNoText)
{
    box->takeFocus();
    desk.type(L"8");
    box->setEnabled(false);
    EXPECT_EQ(box->getShownText(), L"12");
    EXPECT_FALSE(box->userCommit(L"8"));
    box->setEnabled(true);
    box->setReadOnly(true);
    box->takeFocus();
    desk.type(L"8");
    desk.key(Key::Enter);
    EXPECT_FALSE(box->userStep(1));
    EXPECT_EQ(box->getShownText(), L"12");
    EXPECT_TRUE(adaptor->requests.empty());
}

TEST(PlainTextBox, TextsAreOneLineOfBoundedLength)
{
    Desk desk;
    TextBox::InitArgs args;
    args.maxLength = 8;
    auto* box = desk.add<TextBox>(args);
    box->userCommit(L"\r\nab\r\n\tcd\x2028\n");
    EXPECT_EQ(box->getText(), L"ab cd");
    box->setText(L"0123456789");
    EXPECT_EQ(box->getText(), L"01234567");
    box->setText(L"1234567\n8");
    EXPECT_LE(box->getText().size(), 8u);
    box->userEdit(L"with blank ");
    EXPECT_EQ(box->getShownText().size(), 8u);
    box->userEdit(L"one ");
    EXPECT_EQ(box->getShownText(), L"one ") << "more is to come";
}

} // namespace
} // namespace oribund::test
