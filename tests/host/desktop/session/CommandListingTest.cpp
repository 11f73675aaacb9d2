// The table of registered commands that `tarnwick-cad --commands` prints.
#include <gtest/gtest.h>

#include "host/desktop/session/commandlisting.h"

namespace {

void Handler() {}

TEST(CommandListing, AlignsGroupNamesAndFlagsUnderAHeadingAlsoForNone) {
    AcEdCommandStack stack;
    stack.addCommand(L"BlockPrice_Group", L"BlockPrice_Global", L"RZBOMT", 0, Handler);
    stack.addCommand(L"G", L"Stühle_Global", L"STÜHLE", 1, Handler);
    EXPECT_EQ(listCommands(stack),
              "Group             Global name        Local name  Flags\n"
              "BlockPrice_Group  BlockPrice_Global  RZBOMT      0\n"
              "G                 St\xc3\xbchle_Global      ST\xc3\x9cHLE      1\n");
    EXPECT_EQ(listCommands(AcEdCommandStack()), "Group  Global name  Local name  Flags\n");
}

}  // namespace
