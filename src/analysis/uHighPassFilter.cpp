#include "analysis/uHighPassFilter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/uFourier.h"

namespace {

void Filter(std::span<const TEventValue> samples, float TEventValue::*value, TFourier& axis) {
  bool finite = true;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    axis.SetReal(i + 1, samples[i].*value);
    finite = finite && std::isfinite(samples[i].*value);
  }
  if (!finite) {
    for (std::size_t i = 0; i < samples.size(); ++i) axis.SetReal(i + 1, std::numeric_limits<double>::quiet_NaN());
    return;
  }
  axis.Forward();
  for (const std::size_t line : {std::size_t{1}, std::size_t{2}}) {
    axis.SetReal(line, 0);
    axis.SetImag(line, 0);
  }
  axis.Inverse();
}

}  // namespace

std::vector<TFilteredValue> HighPassFiltered(std::span<const TEventValue> samples) {
  const std::size_t size = SpectrumSizeFor(samples.size());
  const auto taken = samples.first(std::min(samples.size(), size));
  TFourier x(size);
  TFourier y(size);
  TFourier z(size);
  Filter(taken, &TEventValue::xvalue, x);
  Filter(taken, &TEventValue::yvalue, y);
  Filter(taken, &TEventValue::zvalue, z);

  std::vector<TFilteredValue> filtered;
  filtered.reserve(taken.size());
  for (std::size_t k = 1; k <= taken.size(); ++k) {
    const double total = std::sqrt(x.Real(k) * x.Real(k) + y.Real(k) * y.Real(k) + z.Real(k) * z.Real(k));
    filtered.push_back({taken[k - 1].time, x.Real(k), y.Real(k), z.Real(k), total});
  }
  return filtered;
}
