// The entry point's messages: the commands it registers and removes, and the linker calls.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "frame/BlockPriceCmd.h"
#include "frame/CalcPriceCmd.h"
#include "frame/RefreshTablesCmd.h"
#include "frame/TarnwickEntry.h"
#include "host/api/acrxregistry.h"

namespace {

AcEdCommandStack& Stack() {
    return *AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

AcRxDynamicLinker& Linker() {
    return *AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
}

std::vector<AcEdCommandStack::Command> GroupCommands() {
    std::vector<AcEdCommandStack::Command> found;
    for (const auto& command : Stack().commands()) {
        if (command.group == L"BlockPrice_Group") found.push_back(command);
    }
    return found;
}

class EntryPointTest : public ::testing::Test {
protected:
    void TearDown() override { Stack().removeGroup(L"BlockPrice_Group"); }
    int m_appId = 0;
};

TEST_F(EntryPointTest, InitRegistersTheCommandsInTableOrderAndUnlocksTheApplication) {
    ASSERT_TRUE(Linker().isApplicationLocked(&m_appId));
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, &m_appId), AcRx::kRetOK);
    using Row = std::tuple<std::wstring, std::wstring, int, AcRxFunctionPtr>;
    std::vector<Row> rows;
    for (const auto& c : GroupCommands())
        rows.emplace_back(c.globalName, c.localName, c.flags, c.function);
    EXPECT_EQ(rows, (std::vector<Row>{{L"BlockPrice_Global", L"RZBOMT", 0, &BlockPriceCmd},
                                      {L"CalcPrice_Global", L"RZBOMC", 1, &CalcPriceCmd},
                                      {L"RefreshTables_Global", L"RZBOMU", 0, &RefreshTablesCmd}}));
    EXPECT_EQ(Stack().lookup(L"RZBOMC")->function, &CalcPriceCmd);
    EXPECT_FALSE(Linker().isApplicationLocked(&m_appId));
    EXPECT_TRUE(Linker().isAppMDIAware(&m_appId));
    Linker().forgetApplication(&m_appId);
}

TEST_F(EntryPointTest, LoadingTwiceAddsTheCommandsAgainAndUnloadRemovesAllInOneCall) {
    acrxEntryPoint(AcRx::kInitAppMsg, &m_appId);
    acrxEntryPoint(AcRx::kInitAppMsg, &m_appId);
    EXPECT_EQ(GroupCommands().size(), 6u);
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &m_appId), AcRx::kRetOK);
    EXPECT_TRUE(GroupCommands().empty());
    EXPECT_EQ(Stack().lookup(L"RZBOMT"), nullptr);
    Linker().forgetApplication(&m_appId);
}

TEST_F(EntryPointTest, OtherMessagesAndAnUnloadWithoutCommandsAreAnsweredOkAndChangeNothing) {
    const auto before = Stack().commands().size();
    EXPECT_EQ(acrxEntryPoint(AcRx::kNullMsg, &m_appId), AcRx::kRetOK);
    EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(7), &m_appId), AcRx::kRetOK);
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &m_appId), AcRx::kRetOK);
    EXPECT_EQ(Stack().commands().size(), before);
    EXPECT_TRUE(Linker().isApplicationLocked(&m_appId));
}

}  // namespace
