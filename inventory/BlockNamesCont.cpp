// Loading, sorting and marking the drawing's block names.
#include "inventory/BlockNamesCont.h"

#include "host/api/acdbdatabase.h"
#include "text/CaseRules.h"

int BlockNamesContSort::Compare(const blname& a, const blname& b) const {
    return CompareNoCase(a.name, b.name);
}

bool BlockNamesCont::Load() {
    m_names.clear();
    m_names.shrink_to_fit();
    m_names.reserve(100);
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr) return true;
    for (const AcDbObjectId id : database->blockTableRecordIds()) {
        std::wstring name;
        if (database->getBlockTableRecordName(id, name) != Acad::eOk) continue;
        if (!name.empty() && name.front() == L'*') continue;
        m_names.push_back(blname{std::move(name), 0});
    }
    return true;
}

void BlockNamesCont::Sort() { BlockNamesContSort().Sort(m_names); }

void BlockNamesCont::SetMark(const wchar_t* name, int value) {
    const int index = BlockNamesContSort().Find(blname{name ? name : L"", 0}, m_names);
    if (index >= 0) m_names[static_cast<std::size_t>(index)].marked = value;
}

void BlockNamesCont::ClearMarks() {
    for (auto& entry : m_names) entry.marked = 0;
}

void BlockNamesCont::UnmarkedNames(std::wstring& out) const {
    out.clear();
    for (const auto& entry : m_names) {
        if (entry.marked == 0) {
            out += entry.name;
            out += L'\n';
        }
    }
}
