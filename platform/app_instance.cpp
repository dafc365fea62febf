#include "platform/app_instance.h"

namespace lunara {
namespace {

HINSTANCE appInstance = nullptr;

}  // namespace

void SetAppInstance(HINSTANCE instance) { appInstance = instance; }

HINSTANCE AppInstance() { return appInstance; }

}  // namespace lunara
