#include "gui/ribbon/uRibbonPage.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

#include "gui/common/uTheme.h"
#include "gui/ribbon/uRibbonGroup.h"

TRibbonPage::TRibbonPage(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_StyledBackground);
}

TRibbonGroup* TRibbonPage::AddGroup(const QString& objectName, const QString& title) {
  auto* group = new TRibbonGroup(objectName, title, this);
  FGroups.push_back(group);
  group->show();
  connect(group, &TRibbonGroup::ContentChanged, this, [this] {
    ArrangeSoon();
    emit ContentChanged();
  });
  return group;
}

std::vector<TRibbonGroup*> TRibbonPage::Shown() const {
  std::vector<TRibbonGroup*> shown;
  std::copy_if(FGroups.begin(), FGroups.end(), std::back_inserter(shown),
               [](const TRibbonGroup* group) { return !group->isHidden() && !group->Vacant(); });
  return shown;
}

bool TRibbonPage::HasContent() const {
  return !Shown().empty();
}

void TRibbonPage::SetFrozen(bool frozen) {
  FFrozen = frozen;
  Arrange();
}

void TRibbonPage::FocusFirst() {
  const auto shown = Shown();
  if (!shown.empty()) shown.front()->FocusFirst();
}

void TRibbonPage::Arrange() {
  if (FFrozen || FArranging) return;
  FArranging = true;
  const auto shown = Shown();
  std::vector<int> widths;
  int total = 0;
  for (const TRibbonGroup* group : shown) total += widths.emplace_back(group->FullWidth());
  std::vector<bool> collapsed(shown.size(), false);
  for (size_t i = shown.size(); i-- > 0 && total > width();) {
    const int saved = widths[i] - shown[i]->CollapsedWidth();
    if (saved <= 0) continue;
    collapsed[i] = true;
    widths[i] -= saved;
    total -= saved;
  }
  const int share = total > width() && !shown.empty() ? width() / static_cast<int>(shown.size()) : 0;
  for (TRibbonGroup* group : FGroups) {
    if (group->Vacant()) group->setGeometry(0, 0, 0, 0);
  }
  int left = 0;
  for (size_t i = 0; i < shown.size(); ++i) {
    if (share > 0) widths[i] = share;
    shown[i]->SetCollapsed(collapsed[i] || share > 0);
    shown[i]->setGeometry(QStyle::visualRect(layoutDirection(), rect(), QRect(left, 0, widths[i], height())));
    left += widths[i];
  }
  FArranging = false;
  update();
}

void TRibbonPage::ArrangeSoon() {
  if (isVisible() && !FArranging) QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

bool TRibbonPage::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  if (event->type() == QEvent::LayoutRequest) Arrange();
  return handled;
}

void TRibbonPage::paintEvent(QPaintEvent*) {
  QStyleOption option;
  option.initFrom(this);
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
  PaintSurfaceFrame(painter, *this);
  painter.setPen(QPen(QColor(TokensOf(palette()).hairline), 1 / devicePixelRatioF()));
  const auto shown = Shown();
  for (size_t i = 0; i + 1 < shown.size(); ++i) {
    const QRect at = shown[i]->geometry();
    const int x = layoutDirection() == Qt::RightToLeft ? at.left() : at.right();
    painter.drawLine(x, 6, x, height() - 6);
  }
}

void TRibbonPage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
}

void TRibbonPage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Arrange();
}
