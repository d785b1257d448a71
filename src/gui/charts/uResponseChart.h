// The shock response spectrum of the selected event, or the envelope of all visible events, over Hz. Where the
// sampling is too slow for more than a rough answer, its curves are dotted on a shaded ground. Main thread only.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analysis/uLimitCurve.h"
#include "analysis/uShockResponse.h"
#include "gui/charts/uFrequencyChart.h"
#include "gui/charts/uResponseTask.h"
#include "model/uEvents.h"

class TResponseChart final : public TFrequencyChart {
  Q_OBJECT

 public:
  explicit TResponseChart(QWidget* parent = nullptr);
  ~TResponseChart() override;

  // Borrows the events until Clear or the next call; an index past the list selects none. `levelOn` is the switch-on
  // level in g. Nothing is calculated out of sight. Where there is no spectrum the chart says why.
  void ShowEvent(const TEventList& events, std::size_t index, double levelOn);
  // By index in the list; empty: all are. Until Clear.
  void SetVisibleEvents(std::vector<bool> visible);
  void Clear() override;

  // Both stay from event to event. The request's level is that of ShowEvent.
  void SetRequest(const TResponseRequest& request);
  [[nodiscard]] const TResponseRequest& Request() const { return FRequest; }
  void SetEnvelope(bool on);
  [[nodiscard]] bool IsEnvelope() const { return FIsEnvelope; }

  // In g, drawn with accelerations; the title names the smallest margin of what is visible. Empty: none. It stays.
  void SetLimit(TLimitCurve limit);

  // Ends a calculation that takes long; the chart says that it was cancelled.
  void Cancel();

  // What is shown.
  [[nodiscard]] const TShockResponse& Response() const { return FResponse; }
  // Why there are no lines, as a sentence; empty while there are.
  [[nodiscard]] std::string WhyNone() const;
  [[nodiscard]] std::span<const TSpectrumLine> Lines() const override { return FLines; }
  [[nodiscard]] QString ValueUnit() const override;
  [[nodiscard]] QString ShownName() const override {
    return FIsEnvelope ? tr("response envelope") : tr("response spectrum");
  }

 signals:
  // A calculation takes long: how many events are done.
  void Progressed(std::size_t done, std::size_t count);
  // No calculation runs any more.
  void Ended();

 protected:
  [[nodiscard]] QString Title() const override;
  void PaintData(QCPPainter& painter) override;
  // With the limit and the smallest margin to it.
  [[nodiscard]] std::vector<TReading> ReadingsAt(double hertz) const override;
  void ScaleValues() override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void PinsChanged() override;

 private:
  [[nodiscard]] std::vector<const TEvent*> Events() const;
  // The visible pinned events that are not calculated yet.
  [[nodiscard]] std::vector<TPin> PinsToCalculate() const;
  // What Show gets the results of: the shown events, then each of those.
  [[nodiscard]] std::vector<TResponseJob> Jobs(std::vector<const TEvent*> events) const;
  void TakeResults(std::vector<TShockResponse> results);
  [[nodiscard]] static TEnvelopePoint PointOf(const TSpectrumLine& line, TSeries series);
  // Calculates, or leaves that until the chart is in sight. The view stays where the same events have the same
  // frequencies.
  void Calculate(bool sameEvents);
  void Show(TShockResponse response);
  // Where curves are dotted: between lines of which one is rough.
  [[nodiscard]] std::vector<TTimeSpan> RoughSpans() const;
  void PaintSeries(QCPPainter& painter, TSeries series);
  [[nodiscard]] bool HasLimit() const;
  struct TMargin {
    double decibel, hertz;
    TSeries series;
  };
  // The smallest of the visible series, of all lines or of one; nothing where no line has one.
  [[nodiscard]] std::optional<TMargin> SmallestMargin(std::optional<std::size_t> line = std::nullopt) const;
  void PaintLimit(QCPPainter& painter);

  const TEventList* FEvents = nullptr;
  std::optional<std::size_t> FIndex;
  std::vector<bool> FVisible;
  bool FIsEnvelope = false;
  TResponseRequest FRequest;
  TLimitCurve FLimit;
  TShockResponse FResponse;
  std::vector<TSpectrumLine> FLines;                                                      // those of FResponse
  std::map<std::shared_ptr<const TPinnedEvent>, std::vector<TSpectrumLine>> FCalculated;  // with this request
  struct TView {
    TTimeSpan full, times;
  };
  std::optional<TView> FView;  // of the same events, before the calculation
  bool FOutdated = false;      // they are calculated when the chart comes in sight
  bool FWasCancelled = false;
  TResponseTask FTask{this};
};
