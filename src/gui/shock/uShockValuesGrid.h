// The samples of the selected event in numbers: time, X, Y, Z and total, a row a sample.
#pragma once

#include <QAbstractTableModel>
#include <span>

#include "gui/charts/uSeries.h"
#include "gui/common/uRowGrid.h"
#include "model/uEvents.h"

// Borrows the samples and formats cells on demand.
class TShockValuesModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  void SetSamples(std::span<const TEventValue> samples, double startMs);
  void SetMasks(TValueMasks masks);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role = Qt::DisplayRole) const override;

 private:
  std::span<const TEventValue> FSamples;
  double FStart = 0;  // ms
  TValueMasks FMasks;
};

class TShockValuesGrid final : public TRowGrid {
  Q_OBJECT

 public:
  explicit TShockValuesGrid(QWidget* parent);

  // Borrows the samples until the next call; times count from startMs.
  void SetSamples(std::span<const TEventValue> samples, double startMs);
  void SetMasks(TValueMasks masks) { FModel->SetMasks(std::move(masks)); }
  // Selects the row of a sample and scrolls to it.
  void MarkSample(std::size_t sample);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void FitColumnsOnce();

  TShockValuesModel* FModel;
  bool FFitted = false;
};
