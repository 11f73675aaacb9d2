// The editor functions: they forward to the installed editor and keep the selection sets.
#include "host/api/acededitor.h"

#include <cstdarg>
#include <cwchar>
#include <map>

#include "host/api/acdbdatabase.h"

AcEdEditor::~AcEdEditor() = default;

namespace {

AcEdEditor*& installedEditor() {
    static AcEdEditor* editor = nullptr;
    return editor;
}

struct SelectionSets {
    std::int64_t nextKey = 1;
    std::map<std::int64_t, std::vector<AcDbObjectId>> sets;
};

SelectionSets& selectionSets() {
    static SelectionSets sets;
    return sets;
}

const std::vector<AcDbObjectId>* findSet(const ads_name& selectionSet) {
    const auto& sets = selectionSets().sets;
    const auto it = sets.find(selectionSet.value[0]);
    return it == sets.end() ? nullptr : &it->second;
}

}  // namespace

AcEdEditor* acedSetEditor(AcEdEditor* editor) {
    AcEdEditor* previous = installedEditor();
    installedEditor() = editor;
    return previous;
}

AcEdEditor* acedEditor() { return installedEditor(); }

int acedGetFileD(const wchar_t* title, const wchar_t* defaultName, const wchar_t* extension,
                 int flags, resbuf* result) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr || result == nullptr) return RTERROR;
    std::wstring path;
    const int status = editor->getFileD(title ? title : L"", defaultName ? defaultName : L"",
                                        extension ? extension : L"", flags, path);
    if (status == RTNORM) *result = resbuf::stringValue(std::move(path));
    return status;
}

int acedAlert(const wchar_t* message) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr) return RTERROR;
    return editor->alert(message ? message : L"");
}

int acedSSGet(const wchar_t* mode, const void* /*point1*/, const void* /*point2*/,
              const std::vector<resbuf>* filter, ads_name& selectionSet) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr) return RTERROR;
    std::vector<AcDbObjectId> selected;
    const int status = editor->selectObjects(mode, filter, selected);
    if (status != RTNORM) return status;
    SelectionSets& sets = selectionSets();
    const std::int64_t key = sets.nextKey++;
    sets.sets.emplace(key, std::move(selected));
    selectionSet = ads_name{{key, 0}};
    return RTNORM;
}

int acedSSLength(const ads_name& selectionSet, std::int32_t* length) {
    const auto* set = findSet(selectionSet);
    if (set == nullptr || length == nullptr) return RTERROR;
    *length = static_cast<std::int32_t>(set->size());
    return RTNORM;
}

int acedSSName(const ads_name& selectionSet, std::int32_t index, ads_name& entity) {
    const auto* set = findSet(selectionSet);
    if (set == nullptr || index < 0 || static_cast<std::size_t>(index) >= set->size())
        return RTERROR;
    acdbGetAdsName(entity, (*set)[static_cast<std::size_t>(index)]);
    return RTNORM;
}

int acedSSFree(const ads_name& selectionSet) {
    return selectionSets().sets.erase(selectionSet.value[0]) == 1 ? RTNORM : RTERROR;
}

bool acedSelectsWholeSpace() {
    const AcEdEditor* editor = acedEditor();
    return editor != nullptr && editor->selectsWholeSpace();
}

int acedGetVar(const wchar_t* name, resbuf* result) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr || name == nullptr || result == nullptr) return RTERROR;
    return editor->getVar(name, *result);
}

int acedSetVar(const wchar_t* name, const resbuf* value) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr || name == nullptr || value == nullptr) return RTERROR;
    return editor->setVar(name, *value);
}

int acedInitGet(int flags, const wchar_t* keywords) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr) return RTERROR;
    return editor->initGet(flags, keywords ? keywords : L"");
}

int acedGetPoint(const ads_point* base, const wchar_t* prompt, ads_point& result) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr) return RTERROR;
    return editor->getPoint(base, prompt ? prompt : L"", result);
}

int acedGrRead(int track, int* type, resbuf* result) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr || type == nullptr || result == nullptr) return RTERROR;
    return editor->grRead(track, *type, *result);
}

int acedGrDraw(const ads_point& from, const ads_point& to, int color, int highlight) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr) return RTERROR;
    return editor->grDraw(from, to, color, highlight);
}

int acedCommandS(const std::vector<resbuf>& arguments) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr) return RTERROR;
    return editor->command(arguments);
}

int acutPrintf(const wchar_t* format, ...) {
    AcEdEditor* editor = acedEditor();
    if (editor == nullptr || format == nullptr) return 0;
    std::wstring text(256, L'\0');
    for (;;) {
        va_list args;
        va_start(args, format);
        const int written = std::vswprintf(text.data(), text.size(), format, args);
        va_end(args);
        if (written >= 0) {
            text.resize(static_cast<std::size_t>(written));
            break;
        }
        // vswprintf reports a short buffer only as failure; give up on absurd sizes.
        if (text.size() > (1u << 20)) return 0;
        text.resize(text.size() * 4);
    }
    editor->print(text);
    return static_cast<int>(text.size());
}
