// The block definitions of the working drawing by name, sorted without regard to case, each with a mark.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "inventory/RLsort.h"

struct blname {
    std::wstring name;
    std::int32_t marked = 0;
};

class BlockNamesContSort final : public RLsort<blname> {
public:
    int Compare(const blname& a, const blname& b) const override;
};

class BlockNamesCont {
public:
    virtual ~BlockNamesCont() = default;

    // Refills from the working database; names beginning with "*" (layouts, anonymous blocks) are
    // left out. Always true: a missing database leaves the container empty.
    bool Load();
    void Sort();
    // Binary search: Sort must have run.
    void SetMark(const wchar_t* name, int value);
    void ClearMarks();
    // Each unmarked name followed by "\n", in array order.
    void UnmarkedNames(std::wstring& out) const;

    const std::vector<blname>& Names() const { return m_names; }

private:
    std::vector<blname> m_names;
};
