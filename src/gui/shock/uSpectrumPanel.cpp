#include "gui/shock/uSpectrumPanel.h"

#include <QComboBox>
#include <QVBoxLayout>

#include "gui/charts/uSpectrumChart.h"
#include "gui/common/uQtText.h"
#include "gui/shock/uChoiceBar.h"

namespace {

constexpr QSize kMinSpectrumSize(180, 120);  // px

// A list of the names of a table of names and values.
template <class TTable>
QComboBox* AddChoice(TChoiceBar& bar, const char* name, const QString& caption, const TTable& table) {
  QStringList choices;
  for (const auto& [text, value] : table) choices.append(QtText(text));
  QComboBox* list = MakeChoiceList(name, QString(caption).remove('&'), choices);
  bar.Add(caption, list);
  return list;
}

}  // namespace

TSpectrumPanel::TSpectrumPanel(QWidget* parent)
    : QWidget(parent),
      FChart(new TSpectrumChart(this)),
      FChoices(new TChoiceBar("btnSpectrumChoices", tr("Kind and window of the spectrum"), this)) {
  setObjectName("pnlSpecAnalysis");
  auto* type = AddChoice(*FChoices, "cmbSpecType", tr("Spe&ctrum"), kSpectrumTypes);
  auto* window = AddChoice(*FChoices, "cmbSpecWindow", tr("&Window"), kWeightingWindows);
  connect(type, &QComboBox::currentIndexChanged, this,
          [this](int entry) { FChart->SetType(kSpectrumTypes.at(static_cast<std::size_t>(entry)).second); });
  connect(window, &QComboBox::currentIndexChanged, this,
          [this](int entry) { FChart->SetWindow(kWeightingWindows.at(static_cast<std::size_t>(entry)).second); });
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(FChart);
}

QSize TSpectrumPanel::minimumSizeHint() const {
  return kMinSpectrumSize;
}
