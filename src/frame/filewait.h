#pragma once
// Waiting for a file that another process makes.

#include <QString>

namespace fx {

/// Waits until the file exists, can be opened and no other process holds it open for writing,
/// letting events run meanwhile. Fails when `limitMs` has passed; the limit is two minutes for
/// every caller of the program, shorter only in tests, and the failure text names two minutes.
void IsFileExistsA(const QString &path, qint64 limitMs = 120000);

} // namespace fx
