#include "gui/ribbon/uRecordingPane.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include "gui/common/uBoxes.h"
#include "gui/common/uLabels.h"
#include "gui/ribbon/uRecordingList.h"

TRecordingPane::TRecordingPane(const QString& listName, const QString& accessibleName, QWidget* parent)
    : QWidget(parent),
      FFilter(new QLineEdit(this)),
      FNote(new TElidedLabel(listName + "Note", this, Qt::ElideRight)),
      FProgress(new QProgressBar(this)),
      FCancel(new QPushButton(tr("Cancel"), this)),
      FList(new TRecordingList(listName, accessibleName, this)) {
  Named(FFilter, listName + "Filter", tr("Filter of the list"));
  FFilter->setPlaceholderText(tr("Filter by name, title, operator or state"));
  FFilter->setClearButtonEnabled(true);
  FFilter->setMaximumWidth(fontMetrics().averageCharWidth() * 50);
  Named(FProgress, listName + "Progress", tr("Recordings read"));
  FProgress->setTextVisible(false);
  FProgress->setMaximumWidth(fontMetrics().averageCharWidth() * 20);
  Named(FCancel, listName + "Cancel", tr("Read no more recordings"),
        tr("Read no more recordings; what was read stays"));
  FCancel->setAutoDefault(true);  // Enter presses it
  auto* row = MakeRow(nullptr, {{FFilter, 2}, {FNote, 3}, {FProgress, 1}, FCancel});
  MakeColumn(this, {row, {FList, 1}}, kNoMargins);
  for (QWidget* widget : std::initializer_list<QWidget*>{FProgress, FCancel}) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    widget->hide();
  }
  connect(FFilter, &QLineEdit::textChanged, FList, &TRecordingList::SetFilter);
  connect(FCancel, &QPushButton::clicked, FList, &TRecordingList::CancelSummaries);
  connect(FList, &TRecordingList::Summarized, this, &TRecordingPane::ShowProgress);
  connect(FList, &TRecordingList::PathRead, this, [this] {
    if (FList->Empty()) ShowProgress(0, 0, {});
  });
}

void TRecordingPane::ShowProgress(int done, int total, const QString& problem) {
  const bool reads = done < total && problem.isEmpty();
  FProgress->setMaximum(std::max(1, total));
  FProgress->setValue(done);
  FProgress->setVisible(reads);
  FCancel->setVisible(reads);
  FNote->setText(reads ? tr("%1 of %2 read").arg(done).arg(total) : QString());
  if (!problem.isEmpty()) FNote->setText(tr("%1 of %2 read: %3").arg(done).arg(total).arg(problem));
}
