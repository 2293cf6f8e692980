#pragma once
// Writing a reviewer's work back into the project's clash and review tables: merged into a
// fresh copy of the project's tables under the project's markers, checked, backed up, loaded.

#include <QtGlobal>

namespace fx {

/// The number of the failure that says there was nothing to write back, so that callers tell
/// it from a real failure without reading its text.
inline constexpr qint32 NoChangesFoundNumber = 1001;

/// Writes the changes of the open store back to its project. Raises on failure, and with
/// "No changes found between Fendrix database and project schema '<schema>'" (number
/// NoChangesFoundNumber) when there was nothing to write; the project is then untouched.
void SaveClashes2PDS();

} // namespace fx
