// Cell properties: defaults of unset bits, text and number conversions, clearing and overlaying.
#include <gtest/gtest.h>

#include "grid/CUGCell.h"
#include "grid/UGSysColor.h"

namespace {

TEST(CUGCell, UnsetPropertiesGiveTheirDefaultsAndLeaveOutArgumentsAlone) {
    const CUGCell cell;
    EXPECT_EQ(cell.GetPropertyFlags(), 0u);
    EXPECT_EQ(cell.GetText(), nullptr);
    std::wstring text = L"untouched";
    EXPECT_EQ(cell.GetText(&text), 1);
    EXPECT_EQ(text, L"untouched");
    EXPECT_STREQ(cell.GetLabelText(), L"");
    EXPECT_EQ(cell.GetDataType(), UGCELLDATA_STRING);
    EXPECT_EQ(cell.GetBackColor(), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(cell.GetHBackColor(), GetSysColor(COLOR_HIGHLIGHT));
    double number = 7.0;
    EXPECT_EQ(cell.GetNumber(&number), 1);
    EXPECT_EQ(number, 7.0);
}

TEST(CUGCell, SettersSetTheirBitsAndTextSettersMakeText) {
    CUGCell cell;
    cell.SetCellType(4);
    cell.SetBackColor(RGB(1, 2, 3));
    EXPECT_EQ(cell.GetPropertyFlags(), UGCELL_CELLTYPE_SET | UGCELL_BACKCOLOR_SET);
    cell.SetNumber(12.5);
    EXPECT_EQ(cell.GetDataType(), UGCELLDATA_NUMBER);
    cell.SetText(L"abc");
    EXPECT_EQ(cell.GetDataType(), UGCELLDATA_STRING);
    EXPECT_EQ(cell.AppendText(L"def"), 0);
    EXPECT_STREQ(cell.GetText(), L"abcdef");
    cell.SetBool(0);
    EXPECT_STREQ(cell.GetText(), L"0");
    EXPECT_EQ(cell.GetDataType(), UGCELLDATA_BOOL);
    CUGCell empty;
    EXPECT_EQ(empty.AppendText(L"x"), 1);
    EXPECT_EQ(empty.GetText(), nullptr);
}

TEST(CUGCell, TheTwoBooleanReadersDisagreeOnlyWhereTheirRulesDo) {
    struct Case {
        const wchar_t* text;
        bool strict;
        bool notFalse;
    };
    for (const Case& c : {Case{L"True", true, true}, Case{L"t", true, true}, Case{L"2.5", true, true},
                          Case{L"0", false, false}, Case{L"False", false, false},
                          Case{L"yes", false, true}, Case{L"", false, true}}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(c.text)));
        CUGCell cell;
        cell.SetText(c.text);
        EXPECT_EQ(cell.GetBool(), c.strict);
        EXPECT_EQ(cell.GetBoolNotFalse(), c.notFalse);
    }
    EXPECT_TRUE(CUGCell().GetBoolNotFalse());
}

TEST(CUGCell, NumbersAreTextReadInTheCLocale) {
    CUGCell cell;
    cell.SetNumber(0.1);
    EXPECT_STREQ(cell.GetText(), L"0.1");
    cell.SetText(L"  -42.75xyz");
    double d = 0;
    long l = 0;
    EXPECT_EQ(cell.GetNumber(&d), 0);
    EXPECT_EQ(d, -42.75);
    EXPECT_EQ(cell.GetNumber(&l), 0);
    EXPECT_EQ(l, -42);
    // A changed text is read again, not the number of the old one.
    cell.SetText(L"3");
    EXPECT_EQ(cell.GetNumber(), 3.0);
    cell.AppendText(L"1");
    EXPECT_EQ(cell.GetNumber(), 31.0);
}

TEST(CUGCell, ClearPropertySubtractsTheBitsWhenAnyIsSet) {
    CUGCell cell;
    cell.SetText(L"x");
    cell.SetAlignment(UG_ALIGNRIGHT);
    cell.ClearProperty(UGCELL_ALIGNMENT_SET);
    cell.ClearProperty(UGCELL_ALIGNMENT_SET);  // already clear: nothing happens
    EXPECT_EQ(cell.GetPropertyFlags(), UGCELL_TEXT_SET | UGCELL_DATATYPE_SET);
    // Two bits of which one is set: the whole value is subtracted, as callers are warned.
    cell.ClearProperty(UGCELL_TEXT_SET | UGCELL_LABEL_SET);
    EXPECT_EQ(cell.GetPropertyFlags(), UGCELL_DATATYPE_SET - UGCELL_LABEL_SET);
}

TEST(CUGCell, ClearAllKeepsTheMaskStringAndMarksTheRestMinusOne) {
    CUGCell cell;
    cell.SetText(L"text");
    cell.SetMask(L"000");
    cell.SetCellType(2);
    cell.AllocExtraMem(16);
    cell.ClearAll();
    EXPECT_EQ(cell.GetPropertyFlags(), 0u);
    // The values behind the bits show when the bits are switched on again without setting them.
    cell.SetPropertyFlags(UGCELL_TEXT_SET | UGCELL_MASK_SET | UGCELL_CELLTYPE_SET |
                          UGCELL_CELLTYPEEX_SET | UGCELL_EXTRAMEMORY_SET);
    EXPECT_STREQ(cell.GetText(), L"");
    EXPECT_STREQ(cell.GetMask(), L"000");
    EXPECT_EQ(cell.GetCellType(), -1);
    EXPECT_EQ(cell.GetCellTypeEx(), -1);
    EXPECT_EQ(cell.GetExtraMemSize(), -1);
    EXPECT_EQ(cell.GetExtraMemPtr(), nullptr);
}

TEST(CUGCell, AddInfoFromOverlaysOnlyTheSetProperties) {
    CUGCell display;
    display.SetBackColor(RGB(10, 10, 10));
    display.SetAlignment(UG_ALIGNCENTER);
    display.SetText(L"default");
    CUGCell stored;
    stored.SetText(L"value");
    stored.SetAlignment(UG_ALIGNRIGHT);
    stored.SetLabelText(L"one\ntwo\n");
    display.AddInfoFrom(stored);
    EXPECT_STREQ(display.GetText(), L"value");
    EXPECT_EQ(display.GetAlignment(), UG_ALIGNRIGHT);
    EXPECT_EQ(display.GetBackColor(), RGB(10, 10, 10));
    EXPECT_EQ(display.GetPropertyFlags(), UGCELL_BACKCOLOR_SET | UGCELL_ALIGNMENT_SET |
                                              UGCELL_TEXT_SET | UGCELL_DATATYPE_SET |
                                              UGCELL_LABEL_SET);
}

TEST(CUGCell, CopiesAreDeep) {
    CUGCell a;
    a.SetLabelText(L"x\n");
    static_cast<unsigned char*>(a.AllocExtraMem(4))[0] = 7;
    CUGCell b;
    a.CopyInfoTo(&b);
    a.SetLabelText(L"changed\n");
    static_cast<unsigned char*>(a.GetExtraMemPtr())[0] = 9;
    EXPECT_STREQ(b.GetLabelText(), L"x\n");
    ASSERT_EQ(b.GetExtraMemSize(), 4);
    EXPECT_EQ(static_cast<unsigned char*>(b.GetExtraMemPtr())[0], 7);
}

}  // namespace
