// The blinking message label and the decimal-number edit, with their timers and keys.
#include <gtest/gtest.h>

#include <QTest>

#include "host/scripted/scriptededitor.h"
#include "pricelist/CEditReal.h"
#include "pricelist/CStaticEx.h"

namespace {

TEST(CStaticEx, AMessageWithoutEndTimeBlinksWithABeepAtEachReturnUntilStopped) {
    ScriptedEditor editor;
    CStaticEx label;
    label.ShowMessage(0, 200, L"Block name is absent");
    EXPECT_EQ(label.text(), "Block name is absent");
    EXPECT_EQ(label.BlinkState(), 1);
    EXPECT_TRUE(label.IsTimerRunning(0));
    EXPECT_FALSE(label.IsTimerRunning(1));

    label.OnTimer(0);
    EXPECT_TRUE(label.isEnabled());
    EXPECT_EQ(label.BlinkState(), 0);
    label.OnTimer(0);
    EXPECT_FALSE(label.isEnabled());  // greyed
    EXPECT_EQ(label.BlinkState(), 1);
    label.OnTimer(0);
    EXPECT_TRUE(label.isEnabled());
    EXPECT_EQ(editor.calls(), (std::vector<RecordedCall>{{L"Beep", {L"100", L"100"}},
                                                         {L"Beep", {L"100", L"100"}}}));
    EXPECT_EQ(label.text(), "Block name is absent");

    label.OnTimer(0);  // grey again, then stopped
    label.StopMessage();
    EXPECT_EQ(label.text(), "");
    EXPECT_TRUE(label.isEnabled());
    EXPECT_FALSE(label.IsTimerRunning(0));
    EXPECT_FALSE(label.IsTimerRunning(1));
}

struct Typed {
    const wchar_t* text;
    int character;
    bool accepted;
};

const Typed kTyped[] = {
    {L"12.5", '.', false},   // a second point
    {L"12.5", '-', false},   // no sign
    {L"12.5", '7', true},    // a digit
    {L"12.5", 8, true},      // backspace
    {L"125", '.', true},     // the first point
    {L"", '.', true},
    {L"1", 'e', false},      // no exponent
    {L"1", '+', false},
    {L"1", ' ', false},
    {L"1", 0x0661, false},   // ARABIC-INDIC DIGIT ONE is no "0" to "9"
    {L".", '0', true},
    {L"99999999999999999999", '9', true},  // no limit on digits
};

TEST(CEditReal, TakesDigitsBackspaceAndOnePoint) {
    for (const auto& [text, character, accepted] : kTyped)
        EXPECT_EQ(CEditReal::AcceptsCharacter(text, character), accepted)
            << character << " after \"" << QString::fromWCharArray(text).toStdString() << "\"";
}

TEST(CEditReal, KeysThatAreNoNumberAreDroppedWhileTyping) {
    CEditReal edit;
    QTest::keyClicks(&edit, "-12.5.e3a");
    EXPECT_EQ(edit.text(), "12.53");
    edit.setSelection(2, 1);  // a selected point still refuses a new one
    QTest::keyClick(&edit, '.');
    EXPECT_EQ(edit.text(), "12.53");
}

}  // namespace
