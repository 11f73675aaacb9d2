// Handles, registered applications and the extended data objects keep under them.
#include <cmath>

#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfguarded.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxfrecordbuilder.h"
#include "host/dxf/dxfviews.h"
#include "text/CaseRules.h"

namespace {

constexpr int kApplicationName = 1001;
constexpr std::size_t kLongestText = 255;  // bytes of a text in extended data

std::optional<std::uint64_t> parseHandle(std::wstring_view text) {
    if (text.empty() || text.size() > 16) return std::nullopt;
    std::uint64_t value = 0;
    for (const wchar_t c : text) {
        int digit = 0;
        if (c >= L'0' && c <= L'9') {
            digit = c - L'0';
        } else if (c >= L'A' && c <= L'F') {
            digit = c - L'A' + 10;
        } else if (c >= L'a' && c <= L'f') {
            digit = c - L'a' + 10;
        } else {
            return std::nullopt;
        }
        value = value * 16 + static_cast<std::uint64_t>(digit);
    }
    return value;
}

bool isTextCode(int code) { return code >= 1000 && code <= 1009; }
bool isPointCode(int code) { return code >= 1010 && code <= 1013; }
bool isRealCode(int code) { return code >= 1040 && code <= 1042; }

}  // namespace

std::optional<std::uint32_t> DxfDocument::recordOfHandle(std::uint64_t handle) const {
    if (m_handleIndexEdits != m_records.editCount()) {
        m_handleIndex.clear();
        for (std::uint32_t r = 0; r < m_records.count(); ++r) {
            if (m_records.isWithdrawn(r)) continue;
            if (const auto own = handleOf(r)) m_handleIndex.emplace(*own, r);
        }
        m_handleIndexEdits = m_records.editCount();
    }
    const auto found = m_handleIndex.find(handle);
    if (found == m_handleIndex.end()) return std::nullopt;
    return found->second;
}

Acad::ErrorStatus DxfDocument::getHandle(AcDbObjectId object, std::wstring& handle) const {
    return guarded([&] {
        if (!m_dialect.handles) return Acad::eNotApplicable;
        const auto record = recordOf(object);
        if (!record) return Acad::eNullObjectId;
        if (m_records.isWithdrawn(*record)) return Acad::eWasErased;
        const auto own = handleOf(*record);
        if (!own) return Acad::eKeyNotFound;
        const std::string text = formatDxfHex(*own);
        handle.assign(text.begin(), text.end());
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::getObjectId(const std::wstring& handle, AcDbObjectId& id) const {
    return guarded([&] {
        if (!m_dialect.handles) return Acad::eNotApplicable;
        const auto value = parseHandle(handle);
        if (!value) return Acad::eInvalidInput;
        const auto record = recordOfHandle(*value);
        if (!record) return Acad::eKeyNotFound;
        id = idOf(*record);
        return Acad::eOk;
    });
}

std::optional<std::uint32_t> DxfDocument::applicationRecord(std::wstring_view name) const {
    const DxfTable* table = m_structure.table("APPID");
    if (table == nullptr) return std::nullopt;
    for (const std::uint32_t entry : table->entries) {
        if (CompareNoCase(m_codec.decode(nameBytes(entry)), name) == 0) return entry;
    }
    return std::nullopt;
}

Acad::ErrorStatus DxfDocument::registerApplication(const std::wstring& name) {
    return guarded([&] {
        if (name.empty()) return Acad::eInvalidSymbolTableName;
        if (applicationRecord(name)) return Acad::eOk;
        DxfTable& table = ensureTable("APPID");
        DxfRecordBuilder b(m_tags, m_dialect, "APPID");
        b.handle(newHandle()).owner(handleOf(table.begin)).subclass("AcDbSymbolTableRecord");
        b.subclass("AcDbRegAppTableRecord").text(2, m_codec.encode(name)).integer(70, 0);
        table.entries.push_back(m_records.insertBefore(m_tags, table.end, b.take()));
        countTableEntry(table);
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::getXData(AcDbObjectId object, const std::wstring& application,
                                        std::vector<resbuf>& data) const {
    return guarded([&] {
        const auto record = recordOf(object);
        if (!record) return Acad::eNullObjectId;
        if (m_records.isWithdrawn(*record)) return Acad::eWasErased;
        const DxfTagRange tags = m_records.tags(*record);
        bool inGroup = false;
        bool found = false;
        std::vector<resbuf> items;
        for (std::uint32_t i = 1; i < tags.size(); ++i) {
            const std::uint32_t tag = tags[i];
            const int code = m_tags.code(tag);
            if (code == kApplicationName) {
                inGroup = CompareNoCase(m_codec.decode(m_tags.value(tag)), application) == 0;
                found = found || inGroup;
                continue;
            }
            if (!inGroup) continue;
            resbuf item;
            item.restype = static_cast<short>(code);
            if (isPointCode(code)) {
                item.resval.rpoint.x = m_tags.real(tag).value_or(0.0);
                // y and z follow under code + 10 and + 20.
                if (i + 1 < tags.size() && m_tags.code(tags[i + 1]) == code + 10)
                    item.resval.rpoint.y = m_tags.real(tags[++i]).value_or(0.0);
                if (i + 1 < tags.size() && m_tags.code(tags[i + 1]) == code + 20)
                    item.resval.rpoint.z = m_tags.real(tags[++i]).value_or(0.0);
            } else if (code >= 1040 && code <= 1059) {
                item.resval.rreal = m_tags.real(tag).value_or(0.0);
            } else if (code >= 1060 && code <= 1070) {
                item.resval.rint = static_cast<short>(m_tags.integer(tag).value_or(0));
            } else if (code == 1071) {
                item.resval.rlong = static_cast<std::int32_t>(m_tags.integer(tag).value_or(0));
            } else {
                item.resval.rstring = m_codec.decode(m_tags.value(tag));
            }
            items.push_back(std::move(item));
        }
        if (!found) return Acad::eKeyNotFound;
        data = std::move(items);
        return Acad::eOk;
    });
}

Acad::ErrorStatus DxfDocument::setXData(AcDbObjectId object, const std::wstring& application,
                                        const std::vector<resbuf>& data) {
    return guarded([&] {
        const auto record = recordOf(object);
        if (!record) return Acad::eNullObjectId;
        if (m_records.isWithdrawn(*record)) return Acad::eWasErased;
        const auto registered = applicationRecord(application);
        if (!registered) return Acad::eKeyNotFound;

        // Checked whole before any tag is made: a refused item changes nothing.
        std::vector<std::string> texts(data.size());
        for (std::size_t i = 0; i < data.size(); ++i) {
            const resbuf& item = data[i];
            const int code = item.restype;
            if (code == 1002) {
                if (item.resval.rstring != L"{" && item.resval.rstring != L"}")
                    return Acad::eInvalidInput;
                texts[i] = std::string(1, item.resval.rstring == L"{" ? '{' : '}');
            } else if (code == 1005) {
                const auto handle = parseHandle(item.resval.rstring);
                if (!handle) return Acad::eInvalidInput;
                texts[i] = formatDxfHex(*handle);
            } else if (isTextCode(code)) {
                texts[i] = m_codec.encode(item.resval.rstring);
                if (texts[i].size() > kLongestText) return Acad::eInvalidInput;
            } else if (isPointCode(code)) {
                const AcGePoint3d& p = item.resval.rpoint;
                if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
                    return Acad::eInvalidInput;
            } else if (isRealCode(code)) {
                if (!std::isfinite(item.resval.rreal)) return Acad::eInvalidInput;
            } else if (code != 1070 && code != 1071) {
                return Acad::eInvalidInput;
            }
        }

        // The other applications' data stays as it was; this one's goes last.
        const DxfTagRange old = m_records.tags(*record);
        std::vector<std::uint32_t> tags;
        bool inGroup = false;
        for (std::uint32_t i = 0; i < old.size(); ++i) {
            const std::uint32_t tag = old[i];
            if (i > 0 && m_tags.code(tag) == kApplicationName)
                inGroup = CompareNoCase(m_codec.decode(m_tags.value(tag)), application) == 0;
            if (!inGroup) tags.push_back(tag);
        }
        if (!data.empty()) {
            tags.push_back(m_tags.appendString(kApplicationName, nameBytes(*registered)));
            for (std::size_t i = 0; i < data.size(); ++i) {
                const resbuf& item = data[i];
                const int code = item.restype;
                if (isPointCode(code)) {
                    tags.push_back(m_tags.appendReal(code, item.resval.rpoint.x));
                    tags.push_back(m_tags.appendReal(code + 10, item.resval.rpoint.y));
                    tags.push_back(m_tags.appendReal(code + 20, item.resval.rpoint.z));
                } else if (isRealCode(code)) {
                    tags.push_back(m_tags.appendReal(code, item.resval.rreal));
                } else if (code == 1070) {
                    tags.push_back(m_tags.appendInteger(code, item.resval.rint));
                } else if (code == 1071) {
                    tags.push_back(m_tags.appendInteger(code, item.resval.rlong));
                } else {
                    tags.push_back(m_tags.appendString(code, texts[i]));
                }
            }
        }
        m_records.replace(*record, std::move(tags));
        return Acad::eOk;
    });
}
