#include "platform/string_table.h"

namespace lunara {
namespace {

constexpr StringResource Strings[] = {
// TEXT() of a macro argument needs the argument expanded first, which the literal here is.
#define LUNARA_STRING(id, text) {id, TEXT(text)},
#include "resources/strings.inc"
#undef LUNARA_STRING
};

}  // namespace

std::span<const StringResource> StringResources() { return Strings; }

}  // namespace lunara
