// A popup at its button.
#pragma once

class QWidget;

// Shows the popup as large as its content, below the anchor or, where the screen ends, above it.
void ShowPopupBelow(QWidget& popup, const QWidget& anchor);
