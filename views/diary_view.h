#pragma once

// The diary view.

#include <cstdint>
#include <vector>

#include "frame/window.h"
#include "records/user_data.h"

namespace lunara {

enum DiaryShowFlag : std::uint32_t {
    DiaryShowNotes = 0x01,
    DiaryShowBleeding = 0x02,
    DiaryShowPeriod = 0x04,
    DiaryShowOvulation = 0x08,
    DiaryShowPregnancy = 0x10,
};

/// Is told of every change of what the diary view shows.
class DiaryListener {
  public:
    DiaryListener() = default;
    DiaryListener(const DiaryListener&) = delete;
    DiaryListener& operator=(const DiaryListener&) = delete;
    virtual ~DiaryListener() = default;

    virtual void NotesShownChanged(bool shown) = 0;
    virtual void BleedingShownChanged(bool shown) = 0;
    virtual void PeriodShownChanged(bool shown) = 0;
    virtual void OvulationShownChanged(bool shown) = 0;
    virtual void PregnancyShownChanged(bool shown) = 0;
};

class DiaryView : public Window, public DataObserver {
  public:
    explicit DiaryView(UserData& userData) : data(userData) {}

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    std::uint32_t GetShowFlags() const { return showFlags; }
    std::uint32_t SetShowNotes(bool shown);
    std::uint32_t SetShowBleeding(bool shown);
    std::uint32_t SetShowPeriod(bool shown);
    std::uint32_t SetShowOvulation(bool shown);
    std::uint32_t SetShowPregnancy(bool shown);
    void AttachListener(DiaryListener& listener) { listeners.push_back(&listener); }
    void DetachListener(DiaryListener& listener);

    SYSTEMTIME GetCurrentDate() const;
    void SetCurrentDate(const SYSTEMTIME& date);
    void Refresh() { Invalidate(true); }
    void Reload() { Invalidate(true); }

  private:
    std::uint32_t SetFlag(std::uint32_t flag, bool shown, void (DiaryListener::*told)(bool));

    UserData& data;
    std::uint32_t showFlags = 31;
    std::vector<DiaryListener*> listeners;
};

}  // namespace lunara
