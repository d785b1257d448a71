// A saved state of the dock panels is walked before the toolkit gets it, because that trusts what it reads: counts,
// depth, names and sizes.
#pragma once

#include <QByteArray>
#include <QStringList>

// The bytes are what QMainWindow::saveState gives for a window with these panels, each once, and without tool bars.
bool IsDockState(const QByteArray& state, const QStringList& panels);
