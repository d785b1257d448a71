// The list of the pinned events above the charts of the selected one: hide, unpin, and what they are aligned at. Hidden
// while nothing is pinned.
#pragma once

#include <QWidget>

#include "analysis/uPinnedEvents.h"

class QComboBox;
class QMenu;
class QToolButton;

class TPinBar : public QWidget {
  Q_OBJECT

 public:
  explicit TPinBar(QWidget* parent);

  void ShowPins(const TPins& pins);
  // Spectra are not aligned.
  void SetAlignmentVisible(bool visible);

 signals:
  // By the slot of the event.
  void VisibleChanged(std::size_t slot, bool visible);
  void UnpinAsked(std::size_t slot);
  void UnpinAllAsked();
  void AlignmentChosen(TAlignment alignment);

 private:
  void FillMenu();

  QToolButton* FList;
  QMenu* FMenu;
  QComboBox* FAlignment;
  TPins FPins;
};
