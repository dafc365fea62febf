#pragma once

// The diary view: a scroll bar, the calendar strip and the agenda, one agenda row for every
// calendar cell. Answers the notifications of the two controls, scrolls them together, opens a
// day's note, and keeps the items shown in the settings.

#include <array>
#include <vector>

#include "diary/data_observer.h"
#include "platform/gdi.h"
#include "views/agenda_ctrl.h"
#include "views/calendar_ctrl.h"
#include "views/day_scroll.h"
#include "views/diary_layout.h"
#include "views/diary_row.h"
#include "window/window.h"

namespace lunara {

/// Is called after every change of a show flag, with the item's new state, and when the user asks
/// for help.
class DiaryListener {
  public:
    DiaryListener() = default;
    DiaryListener(const DiaryListener&) = delete;
    DiaryListener& operator=(const DiaryListener&) = delete;
    virtual ~DiaryListener() = default;

    virtual void NotesShownChanged(bool isShown) = 0;
    virtual void BleedingShownChanged(bool isShown) = 0;
    virtual void PeriodShownChanged(bool isShown) = 0;
    virtual void OvulationShownChanged(bool isShown) = 0;
    virtual void PregnancyShownChanged(bool isShown) = 0;
    /// The user asked for help; `anchor` is the diary's place in the help file.
    virtual void HelpRequested(const WCHAR* anchor) = 0;
};

class DiaryView : public Window, public DataObserver {
  public:
    static constexpr int AgendaId = 3001;
    static constexpr int CalendarId = 3002;
    static constexpr int ScrollBarId = 3003;

    /// `userData` must outlive the view. While the window exists, the view observes it.
    explicit DiaryView(UserData& userData);
    DiaryView(const DiaryView&) = delete;
    DiaryView& operator=(const DiaryView&) = delete;
    ~DiaryView() override;

    /// The items shown, as DiaryShowFlag bits; never 0.
    std::uint32_t GetShowFlags() const { return showFlags; }
    /// Show or hide one item and return the new flags. The last item shown cannot be hidden: then
    /// nothing changes and the result is 0.
    std::uint32_t SetShowNotes(bool isShown);
    std::uint32_t SetShowBleeding(bool isShown);
    std::uint32_t SetShowPeriod(bool isShown);
    std::uint32_t SetShowOvulation(bool isShown);
    std::uint32_t SetShowPregnancy(bool isShown);

    /// Listeners are called in the order in which they were attached, and must stay valid while
    /// attached.
    void AttachListener(DiaryListener& listener);
    void DetachListener(DiaryListener& listener);

    /// The data set's current date.
    SYSTEMTIME GetCurrentDate() const;
    /// Makes `date` the data set's current date and scrolls it into view. Nothing happens when an
    /// observer refuses.
    void SetCurrentDate(const SYSTEMTIME& date);

    /// Repaints: call after the prediction was recomputed or another day has begun.
    void Refresh();
    /// Resets scroll range and start and repaints: call after the content of the data set was
    /// replaced.
    void Reload();

    int PreCreateWindow(CREATESTRUCTW& parameters) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    // DataObserver. The view refuses no change.
    void DateChanged(UserData& changed, const SYSTEMTIME& old, const SYSTEMTIME& current) override;
    void BleedingChanged(UserData& changed, std::int32_t value) override;
    void NoteFlagsChanged(UserData& changed, std::int32_t flags) override;
    void NoteTextChanged(UserData& changed, const WCHAR* text) override;

  private:
    using ListenerCall = void (DiaryListener::*)(bool);

    LRESULT OnCreate();
    void OnDestroy();
    void OnPaint();
    void OnEraseBackground(HDC dc) const;
    void OnSize();
    /// Handles a notification from the agenda or the calendar: returns true and stores the result
    /// in `answer`. Returns false for a notification from any other control.
    bool OnNotify(NMHDR& record, LRESULT& answer);
    void OnGetRow(AgendaRowRequest& request);
    void OnTap(POINT point);

    bool CreateChildren();
    DiaryLayout ClientLayout() const;
    void FitCells();
    void ShowMeasures();
    void ResetScroll();
    void SetStart(const SYSTEMTIME& newStart);
    void BringIntoView(const SYSTEMTIME& date);
    /// The number of rows that fill the agenda, a last one that is cut off included.
    std::int32_t Rows() const;
    /// Whether the day's row is shown and not cut off.
    bool HasWholeRow(const SYSTEMTIME& date) const;
    void ReadShowFlags();
    void WriteShowFlags() const;
    std::uint32_t SetShown(DiaryShowFlag item, bool isShown, ListenerCall changed);
    void EditNote(const SYSTEMTIME& date);
    void OnHelp();
    HBITMAP Picture(DiaryPicture id) const;

    UserData& data;
    CalendarCtrl calendar;
    DayScroll scroll;
    AgendaCtrl agenda;
    std::uint32_t showFlags = AllDiaryItems;
    LONG rowHeight = 0;
    Bitmap forecastMark;
    Bitmap recordedMark;
    Bitmap discardedMark;
    Bitmap noteMark;
    std::vector<DiaryListener*> listeners;
};

}  // namespace lunara
