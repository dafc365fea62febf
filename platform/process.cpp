#include "platform/process.h"

namespace lunara {
namespace {

HINSTANCE appInstance = nullptr;
HWND mainWindow = nullptr;

}  // namespace

void SetAppInstance(HINSTANCE instance) { appInstance = instance; }

HINSTANCE AppInstance() { return appInstance; }

void SetMainWindowHandle(HWND window) { mainWindow = window; }

HWND MainWindowHandle() { return mainWindow; }

}  // namespace lunara
