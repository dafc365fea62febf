#include "platform/string_table.h"

namespace lunara {
namespace {

constexpr StringResource Strings[] = {
#define LUNARA_STRING(id, text) {id, TEXT(text)},
#include "resources/strings.inc"
#undef LUNARA_STRING
};

}  // namespace

std::span<const StringResource> StringResources() { return Strings; }

}  // namespace lunara
