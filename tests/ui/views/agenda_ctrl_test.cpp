// The agenda: one row a day with item cells and a text bubble, both asked of its owner.

#include "views/agenda_ctrl.h"

#include <memory>

#include "platform/text.h"
#include "tests/ui/views/view_test_support.h"

namespace lunara::test {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF Lilac = RGB(200, 100, 200);
constexpr COLORREF Mint = RGB(100, 220, 160);
constexpr COLORREF BubbleYellow = RGB(255, 255, 128);
constexpr int ControlId = 3001;

class AgendaCtrl : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(parent.Make(nullptr, 400, 400), 1);
        ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
        agenda = std::make_unique<lunara::AgendaCtrl>();
        ASSERT_EQ(agenda->Create(0, nullptr, TEXT("Agenda"), WS_CHILD | WS_VISIBLE, 0, 0, 300, 200,
                                 parent.Handle(), reinterpret_cast<HMENU>(ControlId)),
                  1);
        parent.handler = [this](UINT message, WPARAM, LPARAM lParam, LRESULT& result) {
            if (message != WM_NOTIFY) {
                return false;
            }
            auto& header = *reinterpret_cast<NMHDR*>(lParam);
            if (header.code == AGN_GETROW && answerRow) {
                result = answerRow(reinterpret_cast<AgendaRowRequest&>(header));
            } else if (header.code == AGN_TAP) {
                taps.push_back(reinterpret_cast<AgendaTap&>(header).pt);
            }
            return true;
        };
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        agenda.reset();
        UiTest::TearDown();
    }

    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) {
        return ::SendMessageW(agenda->Handle(), message, wParam, lParam);
    }
    /// Answers every row with a height of 20 px, then lets `fill` change the answer.
    void AnswerRows(std::function<void(AgendaRowRequest&)> fill) {
        answerRow = [fill = std::move(fill)](AgendaRowRequest& row) -> LRESULT {
            row.rowHeight = 20;
            fill(row);
            return 1;
        };
    }
    static void SetText(AgendaRowRequest& row, const WCHAR* text) {
        CopyText(row.text, AgendaTextCapacity, text);
    }
    static LONG TextHeight(const MemoryCanvas& canvas) {
        TEXTMETRICW metrics{};
        ::GetTextMetricsW(canvas.Dc(), &metrics);
        return metrics.tmHeight;
    }

    ScriptedWindow parent;
    std::unique_ptr<lunara::AgendaCtrl> agenda;
    std::function<LRESULT(AgendaRowRequest&)> answerRow;
    std::vector<POINT> taps;
};

/// The bounding box of all pixels of a colour; (0, 0, 0, 0) without any.
Box Extent(const MemoryCanvas& canvas, COLORREF color) {
    const RECT bounds = canvas.Bounds();
    Box box = {bounds.right, bounds.bottom, 0, 0};
    for (LONG y = 0; y < bounds.bottom; ++y) {
        for (LONG x = 0; x < bounds.right; ++x) {
            if (canvas.Pixel(x, y) == color) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box.right == 0 ? Box{} : box;
}

/// A bitmap of one colour, with the screen's colour depth.
Bitmap SolidBitmap(int width, int height, COLORREF color) {
    const MemoryDc dc(::CreateCompatibleDC(nullptr));
    const WindowDcScope screen(nullptr);
    Bitmap bitmap(::CreateCompatibleBitmap(screen.Dc(), width, height));
    const SelectScope selected(dc.Get(), bitmap.Get());
    const Brush brush(::CreateSolidBrush(color));
    const RECT all = {0, 0, width, height};
    ::FillRect(dc.Get(), &all, brush.Get());
    return bitmap;
}

TEST_F(AgendaCtrl, HasItsOwnWindowClass) { EXPECT_EQ(ClassOf(agenda->Handle()), L"AgendaCtrl"); }

TEST_F(AgendaCtrl, TakesMeasuresOfAtLeastOne) {
    EXPECT_EQ(Send(AGM_SETMEASURES, 5, 20), 1);
    EXPECT_EQ(agenda->LineCount(), 5);
    EXPECT_EQ(agenda->CellWidth(), 20);
    const std::pair<WPARAM, LPARAM> refused[] = {
        {0, 20},      {5, 0},      {5, -1},           {static_cast<WPARAM>(-1), 20},
        {0x8000, 20}, {5, 0x8000}, {0x100000001, 20},
    };
    for (const auto& [lines, width] : refused) {
        EXPECT_EQ(Send(AGM_SETMEASURES, lines, width), 0) << lines << ", " << width;
        EXPECT_EQ(agenda->LineCount(), 5);
        EXPECT_EQ(agenda->CellWidth(), 20);
    }
}

TEST_F(AgendaCtrl, NewMeasuresRepaintTheWholeControl) {
    PumpMessages();
    ASSERT_FALSE(WaitsForPaint(agenda->Handle()));
    Send(AGM_SETMEASURES, 0, 20);
    EXPECT_FALSE(WaitsForPaint(agenda->Handle()));
    Send(AGM_SETMEASURES, 5, 20);
    RECT update{};
    ::GetUpdateRect(agenda->Handle(), &update, FALSE);
    EXPECT_EQ(BoxOf(update), ClientBox(agenda->Handle()));
}

struct HitCase {
    const char* label;
    POINT point;
    LRESULT area;
    std::int32_t line;
};

TEST_F(AgendaCtrl, HitTestStoresTheColumnOfAnItem) {
    Send(AGM_SETMEASURES, 5, 20);
    const HitCase cases[] = {
        {"first", {0, 0}, 1, 0},
        {"last", {99, 199}, 1, 4},
        {"exactly line count x cell width from the left", {100, 0}, 2, -1},
        {"right of the items", {250, 0}, 2, -1},
        {"outside", {300, 0}, 3, -1},
        {"above", {5, -1}, 3, -1},
    };
    for (const HitCase& c : cases) {
        LUNARA_ROW(c);
        AgendaHitTest request{c.point, -1};
        EXPECT_EQ(Send(AGM_HITTEST, 0, reinterpret_cast<LPARAM>(&request)), c.area);
        EXPECT_EQ(request.line, c.line);
    }
}

TEST_F(AgendaCtrl, HitTestBeforeAnyMeasureFindsNoItem) {
    AgendaHitTest request{{5, 5}, -1};
    EXPECT_EQ(Send(AGM_HITTEST, 0, reinterpret_cast<LPARAM>(&request)), 2);
    request.pt = {-5, 5};
    EXPECT_EQ(Send(AGM_HITTEST, 0, reinterpret_cast<LPARAM>(&request)), 3);
    EXPECT_EQ(request.line, -1);
}

TEST_F(AgendaCtrl, TapIsReportedWithItsSign) {
    Send(WM_LBUTTONUP, 0, MAKELPARAM(-2, 130));
    Send(WM_LBUTTONUP, 0, MAKELPARAM(130, -2));
    ASSERT_EQ(taps.size(), 2U);
    EXPECT_EQ(taps[0].x, -2);
    EXPECT_EQ(taps[0].y, 130);
    EXPECT_EQ(taps[1].x, 130);
    EXPECT_EQ(taps[1].y, -2);
}

TEST_F(AgendaCtrl, WithoutItemsThereAreOnlyFrameAndTitle) {
    bool asked = false;
    AnswerRows([&](AgendaRowRequest&) { asked = true; });
    const MemoryCanvas canvas(300, 200, Lilac);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_FALSE(asked);
    EXPECT_EQ(canvas.Pixel(0, 0), Black);
    EXPECT_EQ(canvas.Pixel(299, 199), Black);
    EXPECT_EQ(canvas.Pixel(5, 5), White);
    EXPECT_EQ(canvas.CountOf(Lilac), 0);
    // More black than in the frame alone: the title.
    EXPECT_GT(canvas.CountOf(Black), 2 * 300 + 2 * 198);
}

TEST_F(AgendaCtrl, RowsAreAskedFromTheTopUntilTheBottom) {
    Send(AGM_SETMEASURES, 3, 20);
    std::vector<std::int32_t> rows;
    AnswerRows([&](AgendaRowRequest& row) {
        EXPECT_EQ(row.header.hwndFrom, agenda->Handle());
        EXPECT_EQ(row.header.idFrom, static_cast<UINT_PTR>(ControlId));
        EXPECT_EQ(row.lineCount, 3);
        EXPECT_EQ(row.text[0], 0);
        for (int k = 0; k < 3; ++k) {
            EXPECT_EQ(row.Items()[k].color, White);
            EXPECT_EQ(row.Items()[k].bitmap, nullptr);
            EXPECT_EQ(row.Items()[k].overlay, nullptr);
            row.Items()[k].color = Lilac;
        }
        SetText(row, TEXT("must be cleared for the next row"));
        row.rowHeight = 60;
        rows.push_back(row.rowIndex);
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(rows, (std::vector<std::int32_t>{0, 1, 2, 3}));
}

TEST_F(AgendaCtrl, StopsAtTheFirstRowWithoutAnAnswer) {
    Send(AGM_SETMEASURES, 3, 20);
    int asked = 0;
    answerRow = [&](AgendaRowRequest& row) -> LRESULT {
        row.rowHeight = 20;
        row.Items()[0].color = Lilac;
        return ++asked < 3 ? 1 : 0;
    };
    const MemoryCanvas canvas(300, 200, Mint);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(Extent(canvas, Lilac), (Box{1, 1, 20, 40}));
    EXPECT_EQ(canvas.CountOf(Mint), 0);
}

TEST_F(AgendaCtrl, ARowOfNoHeightEndsTheAgenda) {
    Send(AGM_SETMEASURES, 3, 20);
    for (const std::int32_t height : {0, -5, 0x8000}) {
        int asked = 0;
        AnswerRows([&](AgendaRowRequest& row) {
            row.rowHeight = height;
            ++asked;
        });
        const MemoryCanvas canvas(300, 200);
        agenda->Draw(canvas.Dc(), canvas.Bounds());
        EXPECT_EQ(asked, 1) << height;
    }
}

TEST_F(AgendaCtrl, AnAnswerThatChangesTheLineCountOrLeavesTheTextUnterminatedDoesNoHarm) {
    Send(AGM_SETMEASURES, 2, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        row.lineCount = 1000000;
        std::fill_n(row.text, AgendaTextCapacity, TEXT('x'));
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_GT(canvas.CountOf(BubbleYellow), 0);
}

TEST_F(AgendaCtrl, OneSinkThatAnswersIsEnough) {
    Send(AGM_SETMEASURES, 2, 20);
    ScriptedSink sink([&](NMHDR& record) -> LRESULT {
        auto& row = reinterpret_cast<AgendaRowRequest&>(record);
        row.rowHeight = 20;
        row.Items()[1].color = Mint;
        return 1;
    });
    agenda->AttachSink(sink);
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(30, 190), Mint);
}

TEST_F(AgendaCtrl, ItemCellsAreFilledAndShareTheirBorders) {
    Send(AGM_SETMEASURES, 2, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        row.Items()[0].color = row.rowIndex % 2 == 0 ? Lilac : Mint;
        row.Items()[1].color = Mint;
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(10, 10), Lilac);
    EXPECT_EQ(canvas.Pixel(10, 30), Mint);
    EXPECT_EQ(canvas.Pixel(10, 50), Lilac);
    EXPECT_EQ(canvas.Pixel(30, 10), Mint);
    EXPECT_EQ(canvas.Pixel(20, 10), Black);
    EXPECT_EQ(canvas.Pixel(40, 10), Black);
    EXPECT_EQ(canvas.Pixel(10, 20), Black);
    EXPECT_EQ(canvas.Pixel(41, 10), White);
}

TEST_F(AgendaCtrl, BitmapIsUnitedWithTheItemsColor) {
    Send(AGM_SETMEASURES, 2, 20);
    const Bitmap black = SolidBitmap(10, 10, Black);
    const Bitmap white = SolidBitmap(10, 10, White);
    AnswerRows([&](AgendaRowRequest& row) {
        row.Items()[0] = {Lilac, black.Get(), nullptr};
        row.Items()[1] = {Lilac, white.Get(), nullptr};
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    // The bitmap is OR-ed with the colour: black shows the colour, white stays white. It is
    // centred, so it begins at (20 - 10) / 2 + 1 = 6 px; the rest of the cell is white.
    EXPECT_EQ(canvas.Pixel(6, 6), Lilac);
    EXPECT_EQ(canvas.Pixel(15, 15), Lilac);
    EXPECT_EQ(canvas.Pixel(16, 16), White);
    EXPECT_EQ(canvas.Pixel(5, 5), White);
    EXPECT_EQ(canvas.Pixel(30, 10), White);
    EXPECT_EQ(canvas.Pixel(20, 10), Black);
}

TEST_F(AgendaCtrl, OverlayMarksTheCellWhereItIsBlack) {
    Send(AGM_SETMEASURES, 2, 20);
    const Bitmap black = SolidBitmap(10, 10, Black);
    const Bitmap white = SolidBitmap(10, 10, White);
    AnswerRows([&](AgendaRowRequest& row) {
        row.Items()[0] = {Lilac, nullptr, black.Get()};
        row.Items()[1] = {Lilac, nullptr, white.Get()};
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(10, 10), Black);
    EXPECT_EQ(canvas.Pixel(5, 5), Lilac);
    EXPECT_EQ(canvas.Pixel(30, 10), Lilac);
}

// GDI draws a monochrome bitmap in the text and background colours of the device context; these
// must not tint it.
TEST_F(AgendaCtrl, PicturesOfOneBitAreBlackAndWhite) {
    Send(AGM_SETMEASURES, 1, 20);
    const Bitmap ones(::CreateBitmap(8, 8, 1, 1, std::vector<BYTE>(16, 0xFF).data()));
    AnswerRows([&](AgendaRowRequest& row) { row.Items()[0] = {Lilac, nullptr, ones.Get()}; });
    const MemoryCanvas canvas(300, 200);
    ::SetBkColor(canvas.Dc(), Mint);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(10, 10), Lilac);
}

TEST_F(AgendaCtrl, PicturesLargerThanTheirCellStayInside) {
    Send(AGM_SETMEASURES, 1, 10);
    const Bitmap black = SolidBitmap(30, 30, Black);
    AnswerRows([&](AgendaRowRequest& row) { row.Items()[0] = {Lilac, nullptr, black.Get()}; });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(5, 10), Black);
    EXPECT_EQ(canvas.Pixel(12, 10), White);
    EXPECT_EQ(canvas.Pixel(5, 3), Lilac);
}

TEST_F(AgendaCtrl, TextStandsInAYellowBubbleWithAnArrowToIt) {
    Send(AGM_SETMEASURES, 5, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        if (row.rowIndex == 2) {
            SetText(row, TEXT("Mar, 04\nx"));
        }
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    const LONG h = TextHeight(canvas);
    const LONG pad = h / 3;
    const Box yellow = Extent(canvas, BubbleYellow);
    EXPECT_EQ(yellow.left, 140);  // two cells right of the items
    EXPECT_EQ(yellow.top, 40 + pad);
    EXPECT_NEAR(yellow.bottom, 40 + 3 * pad + 2 * h, 1);
    EXPECT_EQ(canvas.Pixel(105, 40 + 2 * pad), Black);  // the arrow's shaft
    EXPECT_EQ(canvas.Pixel(99, 41 + 2 * pad), White);
}

TEST_F(AgendaCtrl, FirstLineIsBold) {
    Send(AGM_SETMEASURES, 1, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        if (row.rowIndex == 0) {
            SetText(row, TEXT("llllllll\nllllllll"));
        }
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    const LONG h = TextHeight(canvas);
    const LONG pad = h / 3;
    const auto inkOfLine = [&](LONG line) {
        int ink = 0;
        for (LONG y = 2 * pad + line * h; y < 2 * pad + (line + 1) * h; ++y) {
            for (LONG x = 60 + pad + 1; x < 295; ++x) {
                const COLORREF pixel = canvas.Pixel(x, y);
                ink += pixel != BubbleYellow && pixel != White ? 255 - GetGValue(pixel) : 0;
            }
        }
        return ink;
    };
    EXPECT_GT(inkOfLine(0), inkOfLine(1) * 5 / 4);
    EXPECT_GT(inkOfLine(1), 0);
}

TEST_F(AgendaCtrl, AnAmpersandIsShownAsALetter) {
    Send(AGM_SETMEASURES, 1, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        if (row.rowIndex == 0) {
            SetText(row, TEXT("&&&&&&&&"));
        }
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    SIZE size{};
    ::GetTextExtentPoint32W(canvas.Dc(), TEXT("&&&&&&&&"), 8, &size);
    const Box yellow = Extent(canvas, BubbleYellow);
    const LONG margin = TextHeight(canvas) / 3;  // px, rounded down
    EXPECT_NEAR(yellow.right - yellow.left, size.cx + 2 * margin, 2);
}

TEST_F(AgendaCtrl, ThreeLongTextsStackDownwards) {
    Send(AGM_SETMEASURES, 1, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        if (row.rowIndex < 3) {
            SetText(row, TEXT("one\ntwo\nthree"));
        }
    });
    const MemoryCanvas canvas(300, 400);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    const LONG h = TextHeight(canvas);
    const LONG pad = h / 3;
    // A bubble takes three lines of height h and a gap of one, so the third begins at 8 h, although
    // its row begins at 40 px.
    const Box yellow = Extent(canvas, BubbleYellow);
    EXPECT_EQ(yellow.top, pad);
    EXPECT_NEAR(yellow.bottom, 8 * h + 3 * pad + 3 * h, 1);
}

TEST_F(AgendaCtrl, ABubbleThatIsPushedBelowTheBottomIsNotDrawn) {
    Send(AGM_SETMEASURES, 1, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        SetText(row, row.rowIndex == 0 ? TEXT("1\n2\n3\n4\n5\n6\n7\n8") : TEXT("."));
    });
    const MemoryCanvas probe(1, 1);
    const LONG h = TextHeight(probe);
    const MemoryCanvas canvas(300, static_cast<int>(9 * h));
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    // The next bubble would begin at 9 h, which is the height of the control.
    const LONG margin = h / 3;  // px, rounded down
    EXPECT_NEAR(Extent(canvas, BubbleYellow).bottom, 8 * h + 3 * margin, 1);
    // Its arrow is left out with it: below the first row nothing is drawn beside the item cells.
    for (LONG y = 20; y < 9 * h; ++y) {
        for (LONG x = 22; x < 60; ++x) {
            EXPECT_EQ(canvas.Pixel(x, y), White) << x << ", " << y;
        }
    }
}

TEST_F(AgendaCtrl, TooWideATextMovesItsBubbleLeft) {
    Send(AGM_SETMEASURES, 5, 20);
    AnswerRows([&](AgendaRowRequest& row) {
        if (row.rowIndex == 0) {
            SetText(row, TEXT("WWWWWWWWWWWWWWWWWW"));  // one word cannot wrap
        }
    });
    const MemoryCanvas canvas(300, 200);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    const Box yellow = Extent(canvas, BubbleYellow);
    EXPECT_LT(yellow.left, 140);
    EXPECT_NEAR(yellow.right, 298, 1);  // 2 px from the right edge
}

TEST_F(AgendaCtrl, DrawingLeavesTheDeviceContextAsItWas) {
    Send(AGM_SETMEASURES, 5, 20);
    const Bitmap black = SolidBitmap(10, 10, Black);
    AnswerRows([&](AgendaRowRequest& row) {
        row.Items()[1] = {Lilac, black.Get(), black.Get()};
        SetText(row, TEXT("Mar, 04\nCycle start. "));
    });
    const MemoryCanvas canvas(300, 200);
    const int live = LiveGdiObjects();
    const Selection before(canvas.Dc());
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(Selection(canvas.Dc()), before);
    EXPECT_EQ(LiveGdiObjects(), live);
}

TEST_F(AgendaCtrl, TheLargestMeasuresAndASmallWindowDoNoHarm) {
    AnswerRows([](AgendaRowRequest& row) { SetText(row, TEXT("Mar, 04\nCycle start. ")); });
    Send(AGM_SETMEASURES, 0x7FFF, 0x7FFF);
    const MemoryCanvas canvas(30, 20);
    agenda->Draw(canvas.Dc(), canvas.Bounds());
    ::SetWindowPos(agenda->Handle(), nullptr, 0, 0, 0, 0, SWP_NOZORDER);
    ::RedrawWindow(agenda->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(agenda->LineCount(), 0x7FFF);
}

}  // namespace
}  // namespace lunara::test
