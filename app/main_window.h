#pragma once

// The program's one top-level window. It holds the menu bar and the two views, signs the user in
// when it is created, and saves the diary when it is destroyed.

#include "app/held_password.h"
#include "app/sign_in.h"
#include "diary/user_data.h"
#include "platform/pocketpc/aygshell.h"
#include "views/diary_view.h"
#include "views/graph_view.h"
#include "window/modal_loop.h"
#include "window/window.h"

namespace lunara {

/// The two views, as stored in the setting "CurrentView".
inline constexpr DWORD ViewDiary = 3000;
inline constexpr DWORD ViewGraph = 3001;

/// Posted to the main window to show a warning of the prediction. wParam: MB_ flags of the message
/// box. lParam: the text, a WCHAR array allocated with new[] that the receiver frees. Result: 0.
inline constexpr UINT WM_PREDICTION_WARNING = WM_USER + 2;

/// Name of a registered message with which another process asks the main window for its number of
/// live GDI objects, for tests; Wine does not report it. wParam and lParam are ignored. Result: the
/// number plus 1, so that 0 means "no answer".
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

    /// Creates the window and signs the user in. Returns 1; 0 when the window could not be created
    /// or the user gave up the sign-in, after which this object can be created again.
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
    /// Returns true when WM_CLOSE is handled; false lets the default procedure destroy the window.
    bool OnClose();
    bool OnQueryEndSession();
    void OnEndSession(bool ending);
    static void EndSignIn();
    /// Whether the program may end now. Asks for the password when there are unsaved entries and it
    /// is not held; if the user does not enter it, asks whether to leave without saving.
    bool MayEnd();
    /// Saves unsaved entries if the password is held. After a failure it says why and asks the user
    /// whether to try again.
    void SaveBeforeExit();
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
    /// Repaints both views with the current prediction.
    void RefreshViews();
    /// The client area above the menu bar.
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
    /// Sets up all six buttons and Options items for `view` with the show flags `flags`. Buttons
    /// that the view does not offer are hidden.
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

    /// Hide and show the buttons of the current view, at WM_ENTERDIALOG and WM_EXITDIALOG.
    void HideButtons();
    void ShowButtons();

    // DiaryListener
    void NotesShownChanged(bool shown) override;
    void BleedingShownChanged(bool shown) override;
    void PeriodShownChanged(bool shown) override;
    void OvulationShownChanged(bool shown) override;
    void PregnancyShownChanged(bool shown) override;
    void HelpRequested(const WCHAR* anchor) override;  // of GraphListener, too

    // GraphListener
    void BleedingGraphSelected() override;
    void TemperatureGraphSelected() override;

    // WarningSink
    void PostPredictionWarning(const WCHAR* text) override;

    DWORD currentView = ViewDiary;
    Window menuBar;
    UserData data;  // declared before the views: they observe it until they are destroyed
    GraphView graphView;
    DiaryView diaryView;
    WCHAR userName[NameCapacity] = {};
    HeldPassword password;
    bool askedAtSessionEnd = false;  // MayEnd has run at WM_QUERYENDSESSION
    SHACTIVATEINFO activation{};
    const SYSTEMTIME startDate;  // when this object was created; see OnTimer
};

}  // namespace lunara
