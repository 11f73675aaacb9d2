// Cell properties with their mask, defaults, conversions and the overlay step.
#include "grid/CUGCell.h"

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <utility>

#include "grid/UGSysColor.h"
#include "text/Numbers.h"

struct CUGCell::Rare {
    std::wstring mask;
    std::wstring label;
    int param = 0;
    int cellType = 0;
    int cellTypeEx = 0;
    COLORREF textColor = 0;
    COLORREF backColor = 0;
    COLORREF hTextColor = 0;
    COLORREF hBackColor = 0;
    short border = 0;
    UGPen pen{};
    UGFont font{};
    UGBitmap bitmap{};
    short alignment = 0;
    std::unique_ptr<std::byte[]> extra;
    long extraLength = 0;
    short joinOrigin = 0;
    int joinCol = 0;
    long joinRow = 0;
    CUGCellFormat* format = nullptr;
    int formatValue = 0;
    bool readOnly = false;
    short shortParam = 0;

    void MarkCleared() {
        label.clear();
        param = cellType = cellTypeEx = joinCol = -1;
        extraLength = joinRow = -1;
        extra.reset();
    }

    std::unique_ptr<Rare> Clone() const {
        auto copy = std::make_unique<Rare>();
        copy->mask = mask;
        copy->label = label;
        copy->param = param;
        copy->cellType = cellType;
        copy->cellTypeEx = cellTypeEx;
        copy->textColor = textColor;
        copy->backColor = backColor;
        copy->hTextColor = hTextColor;
        copy->hBackColor = hBackColor;
        copy->border = border;
        copy->pen = pen;
        copy->font = font;
        copy->bitmap = bitmap;
        copy->alignment = alignment;
        copy->CopyExtraFrom(*this);
        copy->joinOrigin = joinOrigin;
        copy->joinCol = joinCol;
        copy->joinRow = joinRow;
        copy->format = format;
        copy->formatValue = formatValue;
        copy->readOnly = readOnly;
        copy->shortParam = shortParam;
        return copy;
    }

    void CopyExtraFrom(const Rare& other) {
        extraLength = other.extraLength;
        extra.reset();
        if (other.extra && other.extraLength > 0) {
            extra = std::make_unique<std::byte[]>(static_cast<std::size_t>(other.extraLength));
            std::memcpy(extra.get(), other.extra.get(), static_cast<std::size_t>(other.extraLength));
        }
    }
};

namespace {

const wchar_t kEmpty[] = L"";

// Values of the rare properties for a cell without a Rare block.
template <typename T>
T Baseline(bool cleared) {
    return cleared ? static_cast<T>(-1) : T{};
}

}  // namespace

CUGCell::CUGCell() = default;
CUGCell::~CUGCell() = default;
CUGCell::CUGCell(CUGCell&& other) noexcept = default;
CUGCell& CUGCell::operator=(CUGCell&& other) noexcept = default;

CUGCell::CUGCell(const CUGCell& other) { CopyInfoFrom(other); }

CUGCell& CUGCell::operator=(const CUGCell& other) {
    if (this != &other) CopyInfoFrom(other);
    return *this;
}

CUGCell::Rare& CUGCell::Ensure() {
    if (!m_rare) {
        m_rare = std::make_unique<Rare>();
        if (m_cleared) m_rare->MarkCleared();
    }
    return *m_rare;
}

int CUGCell::SetText(std::wstring_view text) {
    m_string.assign(text);
    m_propSetFlags |= UGCELL_TEXT_SET | UGCELL_DATATYPE_SET;
    m_dataType = UGCELLDATA_STRING;
    ResetNumberCache();
    return UG_SUCCESS;
}

const wchar_t* CUGCell::GetText() const {
    return (m_propSetFlags & UGCELL_TEXT_SET) ? m_string.c_str() : nullptr;
}

int CUGCell::GetText(std::wstring* text) const {
    if (!(m_propSetFlags & UGCELL_TEXT_SET)) return UG_ERROR;
    *text = m_string;
    return UG_SUCCESS;
}

int CUGCell::GetTextLength() const {
    return (m_propSetFlags & UGCELL_TEXT_SET) ? static_cast<int>(m_string.size()) : 0;
}

int CUGCell::AppendText(std::wstring_view text) {
    if (!(m_propSetFlags & UGCELL_TEXT_SET)) return UG_ERROR;
    m_string.append(text);
    m_propSetFlags |= UGCELL_DATATYPE_SET;
    m_dataType = UGCELLDATA_STRING;
    ResetNumberCache();
    return UG_SUCCESS;
}

int CUGCell::SetMask(std::wstring_view mask) {
    Ensure().mask.assign(mask);
    m_propSetFlags |= UGCELL_MASK_SET;
    return UG_SUCCESS;
}

const wchar_t* CUGCell::GetMask() const {
    return ((m_propSetFlags & UGCELL_MASK_SET) && m_rare) ? m_rare->mask.c_str() : kEmpty;
}

int CUGCell::SetLabelText(std::wstring_view label) {
    Ensure().label.assign(label);
    m_propSetFlags |= UGCELL_LABEL_SET;
    return UG_SUCCESS;
}

const wchar_t* CUGCell::GetLabelText() const {
    return ((m_propSetFlags & UGCELL_LABEL_SET) && m_rare) ? m_rare->label.c_str() : kEmpty;
}

int CUGCell::SetDataType(short type) {
    m_dataType = type;
    m_propSetFlags |= UGCELL_DATATYPE_SET;
    return UG_SUCCESS;
}

short CUGCell::GetDataType() const {
    return (m_propSetFlags & UGCELL_DATATYPE_SET) ? m_dataType : UGCELLDATA_STRING;
}

template <typename T>
int CUGCell::SetRare(std::uint32_t bit, T Rare::*field, T value) {
    Ensure().*field = value;
    m_propSetFlags |= bit;
    return UG_SUCCESS;
}

template <typename T>
T CUGCell::GetRare(std::uint32_t bit, T Rare::*field, T unset, T cleared) const {
    if (!(m_propSetFlags & bit)) return unset;
    if (m_rare) return (*m_rare).*field;
    return m_cleared ? cleared : T{};
}

int CUGCell::SetParam(int value) { return SetRare(UGCELL_PARAM_SET, &Rare::param, value); }
int CUGCell::GetParam() const { return GetRare(UGCELL_PARAM_SET, &Rare::param, 0, -1); }
int CUGCell::SetCellType(int index) { return SetRare(UGCELL_CELLTYPE_SET, &Rare::cellType, index); }
int CUGCell::GetCellType() const { return GetRare(UGCELL_CELLTYPE_SET, &Rare::cellType, 0, -1); }

int CUGCell::SetCellTypeEx(int style) {
    return SetRare(UGCELL_CELLTYPEEX_SET, &Rare::cellTypeEx, style);
}

int CUGCell::GetCellTypeEx() const {
    return GetRare(UGCELL_CELLTYPEEX_SET, &Rare::cellTypeEx, 0, -1);
}

int CUGCell::SetTextColor(COLORREF color) {
    return SetRare(UGCELL_TEXTCOLOR_SET, &Rare::textColor, color);
}

COLORREF CUGCell::GetTextColor() const {
    return GetRare(UGCELL_TEXTCOLOR_SET, &Rare::textColor, GetSysColor(COLOR_WINDOWTEXT), 0u);
}

int CUGCell::SetBackColor(COLORREF color) {
    return SetRare(UGCELL_BACKCOLOR_SET, &Rare::backColor, color);
}

COLORREF CUGCell::GetBackColor() const {
    return GetRare(UGCELL_BACKCOLOR_SET, &Rare::backColor, GetSysColor(COLOR_WINDOW), 0u);
}

int CUGCell::SetHTextColor(COLORREF color) {
    return SetRare(UGCELL_HTEXTCOLOR_SET, &Rare::hTextColor, color);
}

COLORREF CUGCell::GetHTextColor() const {
    return GetRare(UGCELL_HTEXTCOLOR_SET, &Rare::hTextColor, GetSysColor(COLOR_HIGHLIGHTTEXT), 0u);
}

int CUGCell::SetHBackColor(COLORREF color) {
    return SetRare(UGCELL_HBACKCOLOR_SET, &Rare::hBackColor, color);
}

COLORREF CUGCell::GetHBackColor() const {
    return GetRare(UGCELL_HBACKCOLOR_SET, &Rare::hBackColor, GetSysColor(COLOR_HIGHLIGHT), 0u);
}

int CUGCell::SetBorder(short style) { return SetRare(UGCELL_BORDERSTYLE_SET, &Rare::border, style); }

short CUGCell::GetBorder() const {
    return GetRare<short>(UGCELL_BORDERSTYLE_SET, &Rare::border, 0, 0);
}

int CUGCell::SetBorderColor(UGPen pen) { return SetRare(UGCELL_BORDER_SET, &Rare::pen, pen); }
UGPen CUGCell::GetBorderColor() const { return GetRare(UGCELL_BORDER_SET, &Rare::pen, {}, {}); }
int CUGCell::SetFont(UGFont font) { return SetRare(UGCELL_FONT_SET, &Rare::font, font); }
UGFont CUGCell::GetFont() const { return GetRare(UGCELL_FONT_SET, &Rare::font, {}, {}); }

int CUGCell::SetBitmap(UGBitmap bitmap) {
    if (bitmap == UGBitmap{}) {
        m_propSetFlags &= ~UGCELL_BITMAP_SET;
        return UG_SUCCESS;
    }
    return SetRare(UGCELL_BITMAP_SET, &Rare::bitmap, bitmap);
}

UGBitmap CUGCell::GetBitmap() const { return GetRare(UGCELL_BITMAP_SET, &Rare::bitmap, {}, {}); }

int CUGCell::SetAlignment(short alignment) {
    return SetRare(UGCELL_ALIGNMENT_SET, &Rare::alignment, alignment);
}

short CUGCell::GetAlignment() const {
    return GetRare<short>(UGCELL_ALIGNMENT_SET, &Rare::alignment, 0, 0);
}

void* CUGCell::AllocExtraMem(long length) {
    Rare& rare = Ensure();
    rare.extra.reset();
    rare.extraLength = length > 0 ? length : 0;
    if (length > 0) rare.extra = std::make_unique<std::byte[]>(static_cast<std::size_t>(length));
    m_propSetFlags |= UGCELL_EXTRAMEMORY_SET;
    return rare.extra.get();
}

void* CUGCell::GetExtraMemPtr() const {
    return ((m_propSetFlags & UGCELL_EXTRAMEMORY_SET) && m_rare) ? m_rare->extra.get() : nullptr;
}

long CUGCell::GetExtraMemSize() const {
    return ((m_propSetFlags & UGCELL_EXTRAMEMORY_SET) && m_rare) ? m_rare->extraLength : 0;
}

int CUGCell::ClearExtraMem() {
    if (m_rare) {
        m_rare->extra.reset();
        m_rare->extraLength = 0;
    }
    m_propSetFlags &= ~UGCELL_EXTRAMEMORY_SET;
    return UG_SUCCESS;
}

int CUGCell::SetJoinInfo(short origin, int col, long row) {
    Rare& rare = Ensure();
    rare.joinOrigin = origin;
    rare.joinCol = col;
    rare.joinRow = row;
    m_propSetFlags |= UGCELL_JOIN_SET;
    return UG_SUCCESS;
}

int CUGCell::GetJoinInfo(short* origin, int* col, long* row) const {
    if (!(m_propSetFlags & UGCELL_JOIN_SET)) return UG_ERROR;
    const bool none = !m_rare;
    *origin = none ? 0 : m_rare->joinOrigin;
    *col = none ? Baseline<int>(m_cleared) : m_rare->joinCol;
    *row = none ? Baseline<long>(m_cleared) : m_rare->joinRow;
    return UG_SUCCESS;
}

int CUGCell::SetFormatClass(CUGCellFormat* format) {
    if (!format) return UG_ERROR;
    return SetRare(UGCELL_FORMAT_SET, &Rare::format, format);
}

CUGCellFormat* CUGCell::GetFormatClass() const {
    return GetRare<CUGCellFormat*>(UGCELL_FORMAT_SET, &Rare::format, nullptr, nullptr);
}

int CUGCell::SetFormatValue(int value) {
    return SetRare(UGCELL_FORMATVALUE_SET, &Rare::formatValue, value);
}

int CUGCell::GetFormatValue() const {
    return GetRare(UGCELL_FORMATVALUE_SET, &Rare::formatValue, 0, 0);
}

int CUGCell::SetReadOnly(bool flag) { return SetRare(UGCELL_READONLY_SET, &Rare::readOnly, flag); }

bool CUGCell::GetReadOnly() const {
    return GetRare(UGCELL_READONLY_SET, &Rare::readOnly, false, false);
}

int CUGCell::SetShortParam(short value) {
    return SetRare(UGCELL_SHORTPARAM_SET, &Rare::shortParam, value);
}

short CUGCell::GetShortParam() const {
    return GetRare<short>(UGCELL_SHORTPARAM_SET, &Rare::shortParam, 0, 0);
}

int CUGCell::SetNumber(double number) {
    m_string = FormatShortest(number);
    m_propSetFlags |= UGCELL_TEXT_SET | UGCELL_DATATYPE_SET;
    m_dataType = UGCELLDATA_NUMBER;
    m_number = number;
    m_numberCached = true;
    return UG_SUCCESS;
}

int CUGCell::GetNumber(double* number) const {
    if (!(m_propSetFlags & UGCELL_TEXT_SET)) return UG_ERROR;
    if (!m_numberCached) {
        m_number = WToF(m_string);
        m_numberCached = true;
    }
    *number = m_number;
    return UG_SUCCESS;
}

int CUGCell::GetNumber(float* number) const {
    double value = 0.0;
    if (GetNumber(&value) != UG_SUCCESS) return UG_ERROR;
    *number = static_cast<float>(value);
    return UG_SUCCESS;
}

int CUGCell::GetNumber(long* number) const {
    if (!(m_propSetFlags & UGCELL_TEXT_SET)) return UG_ERROR;
    *number = WToL(m_string);
    return UG_SUCCESS;
}

int CUGCell::GetNumber(int* number) const {
    long value = 0;
    if (GetNumber(&value) != UG_SUCCESS) return UG_ERROR;
    constexpr long kMin = -2147483647L - 1;
    constexpr long kMax = 2147483647L;
    *number = static_cast<int>(value < kMin ? kMin : (value > kMax ? kMax : value));
    return UG_SUCCESS;
}

double CUGCell::GetNumber() const {
    double value = 0.0;
    return GetNumber(&value) == UG_SUCCESS ? value : 0.0;
}

int CUGCell::SetBool(int flag) {
    SetText(flag ? L"1" : L"0");
    m_dataType = UGCELLDATA_BOOL;
    return UG_SUCCESS;
}

bool CUGCell::GetBool() const {
    const wchar_t* text = GetText();
    if (text && (text[0] == L'T' || text[0] == L't')) return true;
    return GetNumber() != 0.0;
}

bool CUGCell::GetBoolNotFalse() const {
    const wchar_t* text = GetText();
    const wchar_t first = text ? text[0] : L'\0';
    return first != L'0' && first != L'F' && first != L'f';
}

int CUGCell::SetTime(short year, short month, short day, short hour, short minute, short second) {
    wchar_t buffer[48];
    std::swprintf(buffer, std::size(buffer), L"%04d-%02d-%02d %02d:%02d:%02d", year, month, day, hour,
                  minute, second);
    SetText(buffer);
    m_dataType = UGCELLDATA_TIME;
    return UG_SUCCESS;
}

int CUGCell::GetTime(short* year, short* month, short* day, short* hour, short* minute,
                     short* second) const {
    const wchar_t* text = GetText();
    int parts[6] = {};
    if (!text || std::swscanf(text, L"%d-%d-%d %d:%d:%d", &parts[0], &parts[1], &parts[2],
                              &parts[3], &parts[4], &parts[5]) != 6)
        return UG_ERROR;
    short* targets[6] = {year, month, day, hour, minute, second};
    for (int i = 0; i < 6; ++i) *targets[i] = static_cast<short>(parts[i]);
    return UG_SUCCESS;
}

int CUGCell::IsPropertySet(std::uint32_t bits) const { return (m_propSetFlags & bits) ? 1 : 0; }

int CUGCell::ClearProperty(std::uint32_t bits) {
    if (m_propSetFlags & bits) m_propSetFlags -= bits;
    return UG_SUCCESS;
}

int CUGCell::SetPropertyFlags(std::uint32_t flags) {
    m_propSetFlags = flags;
    return UG_SUCCESS;
}

int CUGCell::ClearAll() {
    m_propSetFlags = 0;
    m_string.clear();
    ResetNumberCache();
    m_cleared = true;
    // A Rare block is kept only for the one value that survives clearing, the mask string; the
    // hidden values of the other properties are not read before they are set again.
    if (m_rare && m_rare->mask.empty())
        m_rare.reset();
    else if (m_rare)
        m_rare->MarkCleared();
    return UG_SUCCESS;
}

int CUGCell::CopyInfoFrom(const CUGCell& source) {
    if (this == &source) return UG_SUCCESS;
    m_propSetFlags = source.m_propSetFlags;
    m_dataType = source.m_dataType;
    m_cleared = source.m_cleared;
    m_numberCached = source.m_numberCached;
    m_number = source.m_number;
    m_string = source.m_string;
    m_rare = source.m_rare ? source.m_rare->Clone() : nullptr;
    return UG_SUCCESS;
}

int CUGCell::CopyInfoTo(CUGCell* target) const { return target->CopyInfoFrom(*this); }

int CUGCell::AddInfoFrom(const CUGCell& source) {
    if (this == &source) return UG_SUCCESS;
    const std::uint32_t bits = source.m_propSetFlags;
    if (bits & UGCELL_TEXT_SET) {
        m_string = source.m_string;
        m_numberCached = source.m_numberCached;
        m_number = source.m_number;
    }
    if (bits & UGCELL_DATATYPE_SET) m_dataType = source.m_dataType;
    m_propSetFlags |= bits;
    if (!(bits & ~(UGCELL_TEXT_SET | UGCELL_DATATYPE_SET))) return UG_SUCCESS;

    // Every other property of the source: read through its getters, so a source without a Rare
    // block gives its baseline values.
    Rare& rare = Ensure();
    if (bits & UGCELL_MASK_SET) rare.mask = source.GetMask();
    if (bits & UGCELL_LABEL_SET) rare.label = source.GetLabelText();
    if (bits & UGCELL_PARAM_SET) rare.param = source.GetParam();
    if (bits & UGCELL_CELLTYPE_SET) rare.cellType = source.GetCellType();
    if (bits & UGCELL_CELLTYPEEX_SET) rare.cellTypeEx = source.GetCellTypeEx();
    if (bits & UGCELL_TEXTCOLOR_SET) rare.textColor = source.GetTextColor();
    if (bits & UGCELL_BACKCOLOR_SET) rare.backColor = source.GetBackColor();
    if (bits & UGCELL_HTEXTCOLOR_SET) rare.hTextColor = source.GetHTextColor();
    if (bits & UGCELL_HBACKCOLOR_SET) rare.hBackColor = source.GetHBackColor();
    if (bits & UGCELL_BORDERSTYLE_SET) rare.border = source.GetBorder();
    if (bits & UGCELL_BORDER_SET) rare.pen = source.GetBorderColor();
    if (bits & UGCELL_FONT_SET) rare.font = source.GetFont();
    if (bits & UGCELL_BITMAP_SET) rare.bitmap = source.GetBitmap();
    if (bits & UGCELL_ALIGNMENT_SET) rare.alignment = source.GetAlignment();
    if ((bits & UGCELL_EXTRAMEMORY_SET) && source.m_rare) rare.CopyExtraFrom(*source.m_rare);
    if (bits & UGCELL_JOIN_SET) source.GetJoinInfo(&rare.joinOrigin, &rare.joinCol, &rare.joinRow);
    if (bits & UGCELL_FORMAT_SET) rare.format = source.GetFormatClass();
    if (bits & UGCELL_FORMATVALUE_SET) rare.formatValue = source.GetFormatValue();
    if (bits & UGCELL_READONLY_SET) rare.readOnly = source.GetReadOnly();
    if (bits & UGCELL_SHORTPARAM_SET) rare.shortParam = source.GetShortParam();
    return UG_SUCCESS;
}

int CUGCell::ResetToStandard() {
    m_propSetFlags = 0x8787;
    m_string.clear();
    ResetNumberCache();
    Rare& rare = Ensure();
    rare.mask.clear();
    rare.label.clear();
    rare.textColor = GetSysColor(COLOR_WINDOWTEXT);
    rare.backColor = GetSysColor(COLOR_WINDOW);
    rare.hTextColor = GetSysColor(COLOR_HIGHLIGHTTEXT);
    rare.hBackColor = GetSysColor(COLOR_HIGHLIGHT);
    rare.alignment = 0;
    return UG_SUCCESS;
}
