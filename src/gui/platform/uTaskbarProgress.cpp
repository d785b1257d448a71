#include "gui/platform/uTaskbarProgress.h"

#include <QWidget>
#include <algorithm>
#include <utility>

#include "gui/platform/uTaskbarEntry.h"

TTaskbarProgress::TTaskbarProgress(const QString& name, QObject* parent) : QObject(parent) {
  setObjectName(name);
}

TTaskbarProgress::~TTaskbarProgress() {
  SetActive(false);
}

void TTaskbarProgress::SetActive(bool active) {
  FActive = active;
  Show();
}

void TTaskbarProgress::SetPosition(double position) {
  FPosition = position;
  Show();
}

void TTaskbarProgress::SetMaximum(double maximum) {
  FMaximum = maximum;
  Show();
}

// Long loops set the position for every row; the desktop hears of whole percents.
void TTaskbarProgress::Show() {
  const double part = FMaximum > 0 ? std::clamp(FPosition / FMaximum, 0.0, 1.0) : 0.0;
  const int percent = FActive ? static_cast<int>(part * 100) : -1;
  if (std::exchange(FShown, percent) != percent) ShowOnTaskbar(qobject_cast<QWidget*>(parent()), percent);
}
