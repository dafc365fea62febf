// Notifications of custom controls: to the parent first, then to the attached sinks in order.

#include "window/notification.h"

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

constexpr int ControlId = 3001;
constexpr UINT Code = 12;

struct ColorRecord {
    NMHDR header;
    int color;
};

class TestControl : public NotifyingControl {
  public:
    TestControl() = default;
    TestControl(const TestControl&) = delete;
    TestControl& operator=(const TestControl&) = delete;
    ~TestControl() override {
        if (Handle() != nullptr) {
            ::DestroyWindow(Handle());
        }
    }
    using NotifyingControl::AskRange;
    using NotifyingControl::MakeHeader;
    using NotifyingControl::NotifyAll;
    using NotifyingControl::NotifyEach;
};

class TestSink : public NotificationSink {
  public:
    TestSink(std::vector<std::string>& calls, std::string sinkName, LRESULT sinkAnswer)
        : log(calls), name(std::move(sinkName)), answer(sinkAnswer) {}

    LRESULT Notify(NMHDR& record) override {
        log.push_back(name);
        if (colors) {
            reinterpret_cast<ColorRecord&>(record).color = static_cast<int>(answer);
        }
        return answer;
    }
    bool GetRange(NMHDR&, int& minimum, int& maximum) override {
        log.push_back(name);
        if (answer == 0) {
            return false;
        }
        minimum = 0;
        maximum = static_cast<int>(answer);
        return true;
    }

    bool colors = false;

  private:
    std::vector<std::string>& log;
    std::string name;
    LRESULT answer;
};

class Notification : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(parent.Make(), 1);
        ASSERT_EQ(control.Create(0, nullptr, TEXT(""), WS_CHILD, 0, 0, 10, 10, parent.Handle(),
                                 reinterpret_cast<HMENU>(ControlId)),
                  1);
        parent.handler = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
            if (message != WM_NOTIFY) {
                return false;
            }
            log.emplace_back("parent");
            notifiedId = wParam;
            notified = reinterpret_cast<const NMHDR*>(lParam);
            result = parentAnswer;
            return true;
        };
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        UiTest::TearDown();
    }

    std::vector<std::string> log;
    WPARAM notifiedId = 0;
    const NMHDR* notified = nullptr;
    LRESULT parentAnswer = 0;
    ScriptedWindow parent;
    TestControl control;
};

TEST_F(Notification, HeaderNamesTheControl) {
    const NMHDR header = control.MakeHeader(Code);
    EXPECT_EQ(header.hwndFrom, control.Handle());
    EXPECT_EQ(header.idFrom, static_cast<UINT_PTR>(ControlId));
    EXPECT_EQ(header.code, Code);
}

TEST_F(Notification, AControlNotifiesItsParentWithoutAnySink) {
    ColorRecord record{control.MakeHeader(Code), 0};
    parentAnswer = 5;
    EXPECT_TRUE(control.NotifyAll(record.header));
    EXPECT_EQ(notifiedId, static_cast<WPARAM>(ControlId));
    EXPECT_EQ(notified, &record.header);
    parentAnswer = 0;
    EXPECT_FALSE(control.NotifyAll(record.header));
    EXPECT_EQ(log.size(), 2U);
}

TEST_F(Notification, SinksAreAskedInTheOrderInWhichTheyWereAttached) {
    TestSink first(log, "first", 0);
    TestSink second(log, "second", 0);
    control.AttachSink(second);
    control.AttachSink(first);
    NMHDR record = control.MakeHeader(Code);
    EXPECT_FALSE(control.NotifyAll(record));
    EXPECT_EQ(log, (std::vector<std::string>{"parent", "second", "first"}));
    log.clear();
    control.DetachSink(second);
    control.NotifyAll(record);
    EXPECT_EQ(log, (std::vector<std::string>{"parent", "first"}));
}

TEST_F(Notification, AnAnswerDoesNotStopTheLaterSinks) {
    TestSink first(log, "first", 1);
    TestSink second(log, "second", 0);
    control.AttachSink(first);
    control.AttachSink(second);
    NMHDR record = control.MakeHeader(Code);
    EXPECT_TRUE(control.NotifyAll(record));
    EXPECT_EQ(log, (std::vector<std::string>{"parent", "first", "second"}));
}

TEST_F(Notification, NotifyEachReportsEachNonZeroAnswerSoThatTheLastOneWins) {
    TestSink red(log, "red", 1);
    TestSink green(log, "green", 2);
    TestSink silent(log, "silent", 0);
    for (TestSink* sink : {&red, &green, &silent}) {
        sink->colors = true;
        control.AttachSink(*sink);
    }
    ColorRecord record{control.MakeHeader(Code), 0};
    std::vector<int> colors;
    control.NotifyEach(record.header, [&] { colors.push_back(record.color); });
    EXPECT_EQ(colors, (std::vector<int>{1, 2}));
}

TEST_F(Notification, TheRangeIsAskedOfEverySink) {
    TestSink first(log, "first", 3);
    TestSink second(log, "second", 7);
    TestSink third(log, "third", 0);
    NMHDR record = control.MakeHeader(0);
    int minimum = 50;
    int maximum = 60;
    // No sink is attached yet, and the parent gives no range.
    EXPECT_FALSE(control.AskRange(record, minimum, maximum));
    EXPECT_EQ(minimum, 50);
    EXPECT_EQ(maximum, 60);
    for (TestSink* sink : {&first, &second, &third}) {
        control.AttachSink(*sink);
    }
    EXPECT_TRUE(control.AskRange(record, minimum, maximum));
    EXPECT_EQ(minimum, 0);
    EXPECT_EQ(maximum, 7);
    EXPECT_EQ(log, (std::vector<std::string>{"first", "second", "third"}));
}

}  // namespace
}  // namespace lunara::test
