// The value-and-appearance record of one grid cell: every property has a bit in a 32-bit mask, and
// the getter of a property whose bit is clear returns that property's default.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "grid/UGDefs.h"

class CUGCellFormat;

class CUGCell final {
public:
    CUGCell();
    CUGCell(const CUGCell& other);
    CUGCell& operator=(const CUGCell& other);
    CUGCell(CUGCell&& other) noexcept;
    CUGCell& operator=(CUGCell&& other) noexcept;
    ~CUGCell();

    // Text: every text setter also makes the data type 1 (text).
    int SetText(std::wstring_view text);
    const wchar_t* GetText() const;     // null when unset
    int GetText(std::wstring* text) const;  // 1 when unset
    int GetTextLength() const;          // 0 when unset
    int AppendText(std::wstring_view text);  // 1, and nothing appended, when there is no text yet

    int SetMask(std::wstring_view mask);
    const wchar_t* GetMask() const;
    // Options of drop lists: one per line, each ended by a line feed.
    int SetLabelText(std::wstring_view label);
    const wchar_t* GetLabelText() const;

    int SetDataType(short type);
    short GetDataType() const;
    int SetParam(int value);  // the owner's own 32-bit value
    int GetParam() const;
    int SetCellType(int index);
    int GetCellType() const;
    int SetCellTypeEx(int style);
    int GetCellTypeEx() const;

    int SetTextColor(COLORREF color);
    COLORREF GetTextColor() const;
    int SetBackColor(COLORREF color);
    COLORREF GetBackColor() const;
    int SetHTextColor(COLORREF color);
    COLORREF GetHTextColor() const;
    int SetHBackColor(COLORREF color);
    COLORREF GetHBackColor() const;

    int SetBorder(short style);
    short GetBorder() const;
    // Handle 0 (unset) stands for the grid-line pen of the sheet.
    int SetBorderColor(UGPen pen);
    UGPen GetBorderColor() const;
    // Handle 0 (unset) stands for the control's default font.
    int SetFont(UGFont font);
    UGFont GetFont() const;
    // Handle 0 clears the property.
    int SetBitmap(UGBitmap bitmap);
    UGBitmap GetBitmap() const;
    int SetAlignment(short alignment);
    short GetAlignment() const;

    // An owned block of bytes for the owner's use; a new allocation replaces the old one.
    void* AllocExtraMem(long length);
    void* GetExtraMemPtr() const;
    long GetExtraMemSize() const;
    int ClearExtraMem();

    int SetJoinInfo(short origin, int col, long row);
    int GetJoinInfo(short* origin, int* col, long* row) const;  // 1 when unset

    int SetFormatClass(CUGCellFormat* format);  // null is refused with 1
    CUGCellFormat* GetFormatClass() const;
    int SetFormatValue(int value);
    int GetFormatValue() const;
    int SetReadOnly(bool flag);
    bool GetReadOnly() const;
    int SetShortParam(short value);
    short GetShortParam() const;

    // Numbers are kept as text, of data type 2.
    int SetNumber(double number);
    int GetNumber(int* number) const;  // each of these returns 1 when there is no text
    int GetNumber(long* number) const;
    int GetNumber(float* number) const;
    int GetNumber(double* number) const;
    double GetNumber() const;  // 0.0 when there is no text
    // Booleans are kept as the text "1" or "0", of data type 3.
    int SetBool(int flag);
    // True when the text starts with "T" or "t" or reads as a non-zero number.
    bool GetBool() const;
    // False only for a text beginning with "0", "F" or "f"; anything else, no text included, is true.
    bool GetBoolNotFalse() const;
    // Date and time as text "YYYY-MM-DD hh:mm:ss", of data type 4.
    int SetTime(short year, short month, short day, short hour, short minute, short second);
    int GetTime(short* year, short* month, short* day, short* hour, short* minute,
                short* second) const;  // 1 when the text is not such a time

    int IsPropertySet(std::uint32_t bits) const;
    // Subtracts the bits from the mask when any of them is set, so pass one bit at a time.
    int ClearProperty(std::uint32_t bits);
    std::uint32_t GetPropertyFlags() const { return m_propSetFlags; }
    int SetPropertyFlags(std::uint32_t flags);
    int ClearAll();
    int CopyInfoFrom(const CUGCell& source);
    int CopyInfoTo(CUGCell* target) const;
    // The overlay step: copies only the properties set in the source and ORs in its mask.
    int AddInfoFrom(const CUGCell& source);
    int ResetToStandard();

private:
    struct Rare;
    Rare& Ensure();
    template <typename T>
    int SetRare(std::uint32_t bit, T Rare::*field, T value);
    template <typename T>
    T GetRare(std::uint32_t bit, T Rare::*field, T unset, T cleared) const;
    void ResetNumberCache() { m_numberCached = false; }

    std::uint32_t m_propSetFlags = 0;
    short m_dataType = UGCELLDATA_STRING;
    // After ClearAll the rarely used values read as -1 (user value, cell type, style ...), before
    // it as 0: this says which, while no Rare block holds them.
    bool m_cleared = false;
    mutable bool m_numberCached = false;
    mutable double m_number = 0.0;  // the text read as a number, kept for sorting
    std::wstring m_string;
    // Everything but the text lives here, allocated on first use, so that a stored text cell
    // stays small.
    std::unique_ptr<Rare> m_rare;
};
