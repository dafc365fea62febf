#pragma once

// The name of the device's owner. The device stores it in the registry, in a record that a desktop
// does not have; there the name of the system account is used.

#include <cstddef>
#include <span>

#include "platform/text.h"

namespace lunara {

/// Longest name in the owner record, in UTF-16 units; the name begins at offset 0.
inline constexpr std::size_t OwnerNameUnits = 36;

/// Reads the name from an owner record: at most OwnerNameUnits units, up to a terminator or the end
/// of the record. Empty for an empty record.
WideString OwnerNameOfRecord(std::span<const BYTE> record);

/// The owner's name from the registry value ControlPanel\Owner\Owner (REG_BINARY, at most 768
/// bytes) under `root`. When that is missing or malformed, the name of the system account; empty
/// when there is neither.
WideString OwnerName(HKEY root = HKEY_CURRENT_USER);

}  // namespace lunara
