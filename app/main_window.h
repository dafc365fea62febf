#pragma once

// The program's one top-level window: menu bar, the two views, sign-in at its creation and the
// saving of the diary at its end.

#include "app/held_password.h"
#include "app/sign_in.h"
#include "diary/user_data.h"
#include "platform/pocketpc/aygshell.h"
#include "views/diary_view.h"
#include "views/graph_view.h"
#include "window/modal_loop.h"
#include "window/window.h"

namespace lunara {

/// Values of the setting "CurrentView".
inline constexpr DWORD ViewDiary = 3000;
inline constexpr DWORD ViewGraph = 3001;

/// Posted to the main window. wParam: style flags of a message box; lParam: a text allocated with
/// new[], freed by the receiver. Result 0.
inline constexpr UINT WM_PREDICTION_WARNING = WM_USER + 2;

/// Registered message, sent to the main window from outside: tests ask how many drawing objects are
/// alive, which the system cannot tell everywhere. Result: their number plus 1, so that no answer
/// at all is not taken for none.
inline constexpr WCHAR LiveGdiObjectsMessage[] = TEXT("Lunara_LiveGdiObjects");

inline constexpr UINT_PTR DayTimerId = 1;
inline constexpr UINT DayTimerPeriodMs = 60'000;

class MainWindow : public Window,
                   private DiaryListener,
                   private GraphListener,
                   private WarningSink {
  public:
    MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow() override;

    /// A window without a parent, of the style and size of the desktop's top-level windows.
    int CreateMain();

    int PreCreateWindow(CREATESTRUCTW& parameters) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    DWORD CurrentView() const { return currentView; }
    const WCHAR* UserName() const { return userName; }
    const HeldPassword& Password() const { return password; }
    UserData& Data() { return data; }
    DiaryView& Diary() { return diaryView; }
    GraphView& Graph() { return graphView; }
    HWND MenuBar() const { return menuBar.Handle(); }

  private:
    friend struct CommandTable;

    // Messages
    LRESULT OnCreate();
    bool SetUp();
    void OnDestroy();
    void OnPaint();
    void OnEraseBackground(HDC dc);
    void OnSize();
    void OnHelp(WPARAM wParam, LPARAM lParam);
    void OnTimer(UINT_PTR timer);
    /// Whether WM_CLOSE is dealt with; if not, the window is destroyed.
    bool OnClose();
    bool OnQueryEndSession();
    void OnEndSession(bool ending);
    static void EndSignIn();
    /// Whether the program may end now. Asks for the password when it is needed for saving and not
    /// held, and, if she does not give it, whether to leave without saving.
    bool MayEnd();
    /// Saves what is dirty; as long as that fails, says why and asks whether to try again.
    void SaveAtEnd();
    bool OnCommand(UINT id);

    // Commands (app/commands.h)
    void Exit();
    void About();
    void ViewDiaryCommand();
    void ViewGraphCommand();
    void ToggleNotes();
    void ToggleBleeding();
    void TogglePeriod();
    void ToggleOvulation();
    void TogglePregnancy();
    void ToggleTemperature();
    void ChangePasswordCommand();
    void HistoryCommand();
    void BackupCommand();
    void RestoreCommand();
    void Help();

    // Views
    bool CreateViews();
    /// They show a new prediction.
    void RefreshViews();
    RECT ViewArea() const;
    void ShowDiaryView();
    void ShowGraphView();
    void ToggleInDiary(UINT command, std::uint32_t (DiaryView::*setter)(bool));
    void ToggleInGraph(UINT command, void (GraphView::*setter)(bool));

    // Menu and menu bar
    bool CreateBar();
    HMENU ToolsMenu() const;
    HMENU OptionsMenu() const;
    void CheckOption(UINT command, bool checked);
    void EnableOption(UINT command, bool enabled);
    void CheckView(UINT shown, UINT other);
    /// Sets up all six buttons and Options items for a view that shows what `flags` say.
    void SetUpButtons(DWORD view, std::uint32_t flags);
    void CheckButton(UINT command, bool checked);
    void ChangeButtonState(UINT command, BYTE clear, BYTE set);
    void ChangeButtonsOfView(BYTE clear, BYTE set);
    void ShownChanged(UINT command, bool shown);
    void GraphSelected(UINT shown, UINT other);

    // Settings
    void ReadSettings();
    void WriteSettings();

    SignedInUser User() { return {data, userName, password}; }

    /// Hides the bar's buttons while a dialog is up (WM_ENTERDIALOG), and shows them again.
    void HideButtons();
    void ShowButtons();

    // DiaryListener
    void NotesShownChanged(bool shown) override;
    void BleedingShownChanged(bool shown) override;
    void PeriodShownChanged(bool shown) override;
    void OvulationShownChanged(bool shown) override;
    void PregnancyShownChanged(bool shown) override;
    void HelpRequested(const WCHAR* anchor) override;  // of both listeners

    // GraphListener
    void BleedingGraphSelected() override;
    void TemperatureGraphSelected() override;

    // WarningSink
    void PostPredictionWarning(const WCHAR* text) override;

    DWORD currentView = ViewDiary;
    Window menuBar;
    UserData data;  // before the views, which watch it
    GraphView graphView;
    DiaryView diaryView;
    WCHAR userName[NameCapacity] = {};
    HeldPassword password;
    bool askedAtSessionEnd = false;  // whether the session may end
    SHACTIVATEINFO activation{};
    const SYSTEMTIME startDate;  // never moved forward: see OnTimer
};

}  // namespace lunara
