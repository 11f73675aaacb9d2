// The registry's checked look-ups, the command stack and the document manager's reactors.
#include <gtest/gtest.h>

#include "host/api/acapdocmanager.h"
#include "host/api/acrxregistry.h"

namespace {

void CommandA() {}
void CommandB() {}

TEST(Registry, LooksUpTheLinkerAndTheCommandStackByKeyAndClass) {
    AcRxObject* linker = acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER);
    EXPECT_NE(AcRxCast<AcRxDynamicLinker>(linker), nullptr);
    EXPECT_EQ(AcRxCast<AcEdCommandStack>(linker), nullptr);
    EXPECT_NE(AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK)), nullptr);
    EXPECT_EQ(acrxSysRegistry()->at(L"NoSuchService"), nullptr);
}

TEST(Registry, DynamicLinkerRemembersUnlockedAndMdiAwareApplications) {
    auto* linker = AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
    int app = 0;
    EXPECT_TRUE(linker->isApplicationLocked(&app));
    linker->unlockApplication(&app);
    linker->registerAppMDIAware(&app);
    EXPECT_FALSE(linker->isApplicationLocked(&app));
    EXPECT_TRUE(linker->isAppMDIAware(&app));
    linker->forgetApplication(&app);
    EXPECT_TRUE(linker->isApplicationLocked(&app));
    EXPECT_FALSE(linker->isAppMDIAware(&app));
}

TEST(CommandStack, FindsCommandsByEitherNameAndRemovesAWholeGroupTwiceAddedOnesToo) {
    AcEdCommandStack stack;
    stack.addCommand(L"Group", L"First_Global", L"FIRST", ACRX_CMD_MODAL, CommandA);
    stack.addCommand(L"Group", L"Second_Global", L"SECOND", ACRX_CMD_TRANSPARENT, CommandB);
    stack.addCommand(L"Other", L"Third_Global", L"THIRD", ACRX_CMD_MODAL, CommandA);

    ASSERT_NE(stack.lookup(L"first"), nullptr);
    EXPECT_EQ(stack.lookup(L"first")->function, &CommandA);
    EXPECT_EQ(stack.lookup(L"_Second_Global")->flags, ACRX_CMD_TRANSPARENT);
    EXPECT_EQ(stack.lookup(L".SECOND")->function, &CommandB);

    EXPECT_EQ(stack.removeGroup(L"Group"), Acad::eOk);
    EXPECT_EQ(stack.lookup(L"FIRST"), nullptr);
    EXPECT_EQ(stack.lookup(L"SECOND"), nullptr);
    EXPECT_NE(stack.lookup(L"THIRD"), nullptr);
    EXPECT_EQ(stack.removeGroup(L"Group"), Acad::eKeyNotFound);
    // A command added twice is there twice, the later one found, until its group goes.
    stack.addCommand(L"Twice", L"Cmd_Global", L"CMD", ACRX_CMD_MODAL, CommandA);
    stack.addCommand(L"Twice", L"Cmd_Global", L"CMD", ACRX_CMD_MODAL, CommandB);
    EXPECT_EQ(stack.commands().size(), 3u);
    EXPECT_EQ(stack.lookup(L"CMD")->function, &CommandB);
    stack.removeGroup(L"Twice");
    EXPECT_EQ(stack.commands().size(), 1u);
}

struct RecordingReactor : AcApDocManagerReactor {
    std::vector<AcApDocument*> current;
    std::vector<AcApDocument*> toBeDestroyed;
    std::vector<std::wstring> destroyed;
    void documentBecameCurrent(AcApDocument* document) override { current.push_back(document); }
    void documentToBeDestroyed(AcApDocument* document) override {
        toBeDestroyed.push_back(document);
    }
    void documentDestroyed(const wchar_t* fileName) override { destroyed.push_back(fileName); }
};

TEST(DocManager, TellsRegisteredReactorsOnlyOfEachSwitchAndForgetsTheCurrentDocument) {
    AcApDocManager manager;
    RecordingReactor reactor;
    RecordingReactor removed;
    manager.addReactor(&reactor);
    manager.addReactor(&reactor);
    manager.addReactor(&removed);
    manager.removeReactor(&removed);
    EXPECT_EQ(manager.reactors().size(), 1u);

    AcApDocument document(nullptr, L"plan.dxf");
    AcApDocument annex(nullptr, L"annex.dxf");
    manager.documentCreated(&document);
    EXPECT_EQ(manager.curDocument(), &document);
    manager.documentCreated(&annex);
    manager.documentActivated(&annex);  // already current: no news
    manager.documentActivated(&document);
    EXPECT_EQ(manager.curDocument(), &document);
    manager.documentToBeDestroyed(&document);

    EXPECT_EQ(reactor.current, (std::vector<AcApDocument*>{&document, &annex, &document}));
    EXPECT_EQ(reactor.toBeDestroyed, std::vector<AcApDocument*>{&document});
    EXPECT_EQ(reactor.destroyed, std::vector<std::wstring>{L"plan.dxf"});
    EXPECT_TRUE(removed.toBeDestroyed.empty() && removed.current.empty());
    EXPECT_EQ(manager.curDocument(), nullptr);
}

}  // namespace
