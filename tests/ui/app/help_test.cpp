#include "app/help.h"

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

class Help : public UiTest {};

TEST_F(Help, TheViewerIsStartedWithTheAnchorAsItsArgument) {
    StartHelp(TEXT("Lunara.htm#Lunara_help"));
    StartHelp(TEXT("Lunara.htm#_Calendar_diary"));
    EXPECT_EQ(help.programs, (std::vector<std::wstring>(2, TEXT("PegHelp.exe"))));
    EXPECT_EQ(help.anchors, (std::vector<std::wstring>{TEXT("Lunara.htm#Lunara_help"),
                                                       TEXT("Lunara.htm#_Calendar_diary")}));
}

TEST_F(Help, AMissingViewerShowsNoBox) {
    SetHelpRecorder(nullptr);
    StartHelp(TEXT("Lunara.htm#Lunara_help"));
    EXPECT_TRUE(messages.boxes.empty());
}

}  // namespace
}  // namespace lunara::test
