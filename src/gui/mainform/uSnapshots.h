// Pictures of every view, as the window draws them.
#pragma once

#include <QString>
#include <QStringList>

class TKorvexMainForm;

// Opens `recording` in a window that was started without one, and saves the welcome panel, all views with
// their panels and switches, the keys and the backstage as PNG in `folder`, which is made if need be. Returns the
// files. Throws std::runtime_error when a file cannot be written, or before it writes any when the recording is not
// shown.
QStringList SaveSnapshots(TKorvexMainForm& form, const QString& recording, const QString& folder);
