#include "gui/common/uAnalysisBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace {

constexpr int kSteps = 1000;
constexpr int kProgressWidth = 120;  // px

}  // namespace

TAnalysisBar::TAnalysisBar(const QString& name, QWidget* parent)
    : QFrame(parent), FText(new QLabel(this)), FProgress(new QProgressBar(this)), FButton(new QPushButton(this)) {
  setObjectName(name);
  FText->setTextFormat(Qt::PlainText);
  FText->setWordWrap(true);
  FProgress->setRange(0, kSteps);
  FProgress->setTextVisible(false);
  FProgress->setMaximumWidth(kProgressWidth);
  FProgress->setAccessibleName(tr("Progress of the shock analysis"));
  FButton->setObjectName(name + "Button");
  connect(FButton, &QPushButton::clicked, this, [this] {
    if (FState == TState::Running) {
      emit Cancelled();
    } else {
      emit Wanted();
    }
  });
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(8, 4, 8, 4);
  layout->addWidget(FText, 1);
  layout->addWidget(FProgress);
  layout->addWidget(FButton);
  hide();
}

void TAnalysisBar::Show(TState state, const QString& text, const QString& button) {
  FState = state;
  FText->setText(text);
  FButton->setText(button);
  FProgress->setVisible(state == TState::Running);
  setVisible(state != TState::Nothing);
}

void TAnalysisBar::ShowIdle() {
  Show(TState::Idle, tr("The shocks are not analysed yet."), tr("Analyse"));
}

void TAnalysisBar::ShowRunning(std::size_t done, std::size_t all) {
  const QLocale english(QLocale::English);
  Show(TState::Running, tr("Analysing shock %1 of %2").arg(english.toString(done + 1), english.toString(all)),
       tr("Cancel"));
  const double part = static_cast<double>(done) / static_cast<double>(std::max<std::size_t>(all, 1));
  FProgress->setValue(static_cast<int>(part * kSteps));
}

void TAnalysisBar::ShowCancelled() {
  Show(TState::Cancelled, tr("The shock analysis was cancelled."), tr("Analyse"));
}

void TAnalysisBar::ShowNothing() {
  Show(TState::Nothing, {}, {});
}

void TAnalysisBar::showEvent(QShowEvent* event) {
  QFrame::showEvent(event);
  if (FState == TState::Idle) emit Wanted();
}
