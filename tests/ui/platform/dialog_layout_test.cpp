#include "platform/pocketpc/dialog_layout.h"

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

TEST(DialogLayout, TheSheetGrowsEvenlyUpToTheLimitAndIsCentred) {
    const struct {
        const char* label;
        SIZE designed;
        SIZE client;
        double scale;
        LONG left;
    } rows[] = {
        {"more room than the largest scale uses", {200, 200}, {480, 640}, 1.5, 90},
        {"as wide as fits", {380, 200}, {480, 640}, 1.2, 12},
        {"as high as fits", {200, 582}, {480, 640}, 1.0, 140},
        {"shrinks in a small window", {456, 200}, {252, 640}, 0.5, 12},
        {"never below the smallest scale", {1000, 200}, {252, 640}, 0.5, 0},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        const SheetLayout layout = LayOutSheet(row.designed, row.client);
        EXPECT_DOUBLE_EQ(layout.scale, row.scale);
        EXPECT_EQ(layout.origin.x, row.left);
        EXPECT_EQ(layout.origin.y, TitleStripPx + SheetMarginPx);
    }
}

TEST(DialogLayout, ControlsThatTouchInTheTemplateTouchOnTheSheet) {
    const SheetLayout layout{1.5, {7, 46}};
    for (LONG edge = 0; edge < 50; ++edge) {
        const RECT left = PlaceOnSheet({0, 0, edge, 10}, layout);
        const RECT right = PlaceOnSheet({edge, 0, 60, 10}, layout);
        EXPECT_EQ(left.right, right.left);
    }
}

}  // namespace
}  // namespace lunara::test
