#include "gui/shock/uSpectrumPanel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uQtText.h"
#include "gui/shock/uChoiceList.h"

namespace {

constexpr int kMinWidth = 180;  // px
constexpr int kChoiceGap = 12;  // px, after each choice

// A list of the names of a table of names and values, with its label.
template <class TTable>
QComboBox* AddChoice(QHBoxLayout& row, const char* name, const QString& caption, const TTable& table) {
  auto* label = new QLabel(caption);
  QStringList choices;
  for (const auto& [text, value] : table) choices.append(QtText(text));
  QComboBox* list = MakeChoiceList(name, QString(caption).remove('&'), choices);
  label->setBuddy(list);
  list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  row.addWidget(label);
  row.addWidget(list, 1);
  row.addSpacing(kChoiceGap);
  return list;
}

}  // namespace

TSpectrumPanel::TSpectrumPanel(QWidget* parent) : QWidget(parent), FChart(new TSpectrumChart(this)) {
  setObjectName("pnlSpecAnalysis");
  auto* choices = new QHBoxLayout;
  choices->setContentsMargins(4, 2, 4, 0);
  auto* type = AddChoice(*choices, "cmbSpecType", tr("Spe&ctrum"), kSpectrumTypes);
  auto* window = AddChoice(*choices, "cmbSpecWindow", tr("&Window"), kWeightingWindows);
  choices->addStretch(1);
  connect(type, &QComboBox::currentIndexChanged, this,
          [this](int entry) { FChart->SetType(kSpectrumTypes.at(static_cast<std::size_t>(entry)).second); });
  connect(window, &QComboBox::currentIndexChanged, this,
          [this](int entry) { FChart->SetWindow(kWeightingWindows.at(static_cast<std::size_t>(entry)).second); });
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addLayout(choices);
  layout->addWidget(FChart, 1);
  FLabels = findChildren<QLabel*>();
}

QSize TSpectrumPanel::minimumSizeHint() const {
  return {kMinWidth, QWidget::minimumSizeHint().height()};
}

void TSpectrumPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  int needed = kChoiceGap;
  for (const QLabel* label : FLabels) {
    needed += label->sizeHint().width() + label->buddy()->minimumSizeHint().width() + 2 * kChoiceGap;
  }
  for (QLabel* label : FLabels) label->setVisible(width() >= needed);
}
