// The selected event in numbers: time or frequency, X, Y, Z and total, a row a sample or a line of the spectrum.
#pragma once

#include <QAbstractTableModel>
#include <span>
#include <string>

#include "analysis/uSpectrum.h"
#include "gui/charts/uSeries.h"
#include "gui/common/uRowGrid.h"
#include "model/uEvents.h"
#include "shell/uSettings.h"

// Borrows the samples or the lines and formats cells on demand.
class TShockValuesModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  // Either samples or lines.
  void Set(std::span<const TEventValue> samples, double startMs, std::span<const TSpectrumLine> lines,
           const QString& unit);
  void SetDisplay(const TDisplaySettings& display);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role = Qt::DisplayRole) const override;

 private:
  std::span<const TEventValue> FSamples;
  std::span<const TSpectrumLine> FLines;
  QString FUnit;      // of the lines; empty while samples are shown
  double FStart = 0;  // ms
  std::string FTimeMask, FAccelerationMask;
};

class TShockValuesGrid final : public TRowGrid {
  Q_OBJECT

 public:
  explicit TShockValuesGrid(QWidget* parent);

  // Borrows the samples until the next call; times count from startMs.
  void SetSamples(std::span<const TEventValue> samples, double startMs);
  void SetDisplay(const TDisplaySettings& display) { FModel->SetDisplay(display); }
  // The lines of a spectrum in place of samples, with values in this unit; borrowed as these. Each of the two has its
  // own widths of columns.
  void SetLines(std::span<const TSpectrumLine> lines, const QString& unit);
  // px in which all columns of usual numbers are in sight.
  [[nodiscard]] int FittingWidth() const;
  // Selects the row of a sample or a line and scrolls to it.
  void MarkRow(std::size_t row);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  // While it shows lines, else samples.
  [[nodiscard]] int UsualWidth(int column, bool lines) const;
  void FitColumnsOnce();
  void SwitchTo(bool lines);

  TShockValuesModel* FModel;
  bool FShowsLines = false;
  bool FFitted = false;
  // Of what is not shown.
  QByteArray FOtherColumns;
  bool FOtherFitted = false;
};
