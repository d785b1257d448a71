#include "gui/shock/uPinBar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolButton>

#include "base/uDateTime.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uPinLooks.h"
#include "gui/common/uQtText.h"
#include "gui/shock/uChoiceBar.h"

TPinBar::TPinBar(QWidget* parent) : QWidget(parent), FList(new QToolButton(this)), FMenu(new QMenu(this)) {
  setObjectName("pnlPins");
  FList->setObjectName("btnPins");
  FList->setAccessibleName(tr("Pinned events"));
  FList->setToolTip(tr("The pinned events: hide one, or unpin it"));
  FMenu->setObjectName("mnuPins");
  FMenu->setToolTipsVisible(true);
  // The style draws the mark of a menu over the text, so the text has one.
  connect(FList, &QToolButton::clicked, this, [this] { FMenu->popup(FList->mapToGlobal(FList->rect().bottomLeft())); });
  QStringList choices;
  for (const auto& [name, alignment] : kAlignments) choices.append(tr("aligned at the %1").arg(QtText(name)));
  FAlignment = MakeChoiceList("cmbPinAlignment", tr("What pinned events are aligned at"), choices);
  FAlignment->setMaximumWidth(FAlignment->sizeHint().width());
  FAlignment->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  FAlignment->setMinimumContentsLength(3);
  connect(FAlignment, &QComboBox::currentIndexChanged, this,
          [this](int entry) { emit AlignmentChosen(kAlignments.at(static_cast<std::size_t>(entry)).second); });
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(4, 2, 4, 0);
  row->addWidget(FList);
  row->addWidget(FAlignment, 1000);  // all of its width, where there is room
  row->addStretch(1);
  hide();
}

void TPinBar::SetAlignmentVisible(bool visible) {
  FAlignment->setVisible(visible);
}

void TPinBar::ShowPins(const TPins& pins) {
  FPins = pins;
  FList->setText(tr("%1 pinned ▾").arg(pins.items.size()));
  const QSignalBlocker silent(FAlignment);
  FAlignment->setCurrentIndex(static_cast<int>(pins.alignment));
  FillMenu();
  setVisible(!pins.items.empty());
}

void TPinBar::FillMenu() {
  for (QMenu* one : FMenu->findChildren<QMenu*>()) one->deleteLater();
  FMenu->clear();
  for (const TPin& pin : FPins.items) {
    const TPinnedEvent& pinned = *pin.event;
    const double time = DateTimeOf(pinned.missionStart, pinned.event.GetStartTime());
    const QString words =
        tr("%1 · %2 g · %3")
            .arg(PinTitle(pin), Figure(double{pinned.event.Max}), QtText(FormatDateTime(DateTimeMask(), time)));
    QMenu* one = FMenu->addMenu(PinIcon(palette(), pin.slot), QString(words).replace('&', "&&"));
    one->menuAction()->setToolTip(Qt::convertFromPlainText(QtText(pinned.file)));
    QAction* show = one->addAction(tr("&Show"));
    show->setCheckable(true);
    show->setChecked(pin.visible);
    // The list is filled anew by what these do.
    const std::size_t slot = pin.slot;
    connect(
        show, &QAction::toggled, this, [this, slot](bool on) { emit VisibleChanged(slot, on); }, Qt::QueuedConnection);
    connect(
        one->addAction(tr("&Unpin")), &QAction::triggered, this, [this, slot] { emit UnpinAsked(slot); },
        Qt::QueuedConnection);
  }
  FMenu->addSeparator();
  connect(FMenu->addAction(tr("Unpin &all")), &QAction::triggered, this, &TPinBar::UnpinAllAsked, Qt::QueuedConnection);
}
