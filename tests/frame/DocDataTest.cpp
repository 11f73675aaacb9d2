// Per-document data: registered on the document manager, records dropped with their documents.
#include <gtest/gtest.h>

#include <algorithm>

#include "frame/DocData.h"

namespace {

bool IsRegistered(const AcApDocManagerReactor* reactor) {
    const auto& reactors = acDocManagerPtr()->reactors();
    return std::find(reactors.begin(), reactors.end(), reactor) != reactors.end();
}

struct Counter {
    int value = 0;
};

TEST(DocData, AManagerRegistersItselfAndWithdrawsWhenDestroyed) {
    EXPECT_TRUE(IsRegistered(&DocDataManager));  // the module's own
    EXPECT_EQ(DocDataManager.documentCount(), 0u);
    const AcApDocManagerReactor* address = nullptr;
    {
        const AsdkDataManager<CDocData> manager;
        address = &manager;
        EXPECT_TRUE(IsRegistered(address));
    }
    EXPECT_FALSE(IsRegistered(address));
}

TEST(DocData, ARecordIsErasedWhenItsDocumentIsAboutToBeDestroyed) {
    AsdkDataManager<Counter> manager;
    AcApDocument first(nullptr, L"first.dxf");
    AcApDocument second(nullptr, L"second.dxf");
    AcApDocument other(nullptr, L"other.dxf");
    manager.docData(&first).value = 3;
    manager.docData(&second).value = 4;
    acDocManagerPtr()->documentCreated(&first);
    acDocManagerPtr()->documentToBeDestroyed(&other);  // without a record: nothing changes
    EXPECT_EQ(manager.documentCount(), 2u);
    acDocManagerPtr()->documentToBeDestroyed(&first);
    EXPECT_EQ(manager.documentCount(), 1u);
    EXPECT_EQ(manager.docData(&second).value, 4);
    EXPECT_EQ(manager.docData(&first).value, 0);
}

}  // namespace
