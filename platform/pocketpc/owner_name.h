#pragma once

// The name of the device's owner, which the device keeps in the registry. A desktop has no such
// record: there it is the name of the signed-in user.

#include <cstddef>
#include <span>

#include "platform/text.h"

namespace lunara {

/// Units of the name at the head of the owner record.
inline constexpr std::size_t OwnerNameUnits = 36;

/// The name in the first bytes of an owner record, of whatever length the record is.
WideString OwnerNameOfRecord(std::span<const BYTE> record);

/// The owner's name from the record under `root`; without a record the signed-in user's name, and
/// without that either an empty text.
WideString OwnerName(HKEY root = HKEY_CURRENT_USER);

}  // namespace lunara
