// The damage boundary of a product: which shocks, by velocity change and peak, exceed what it withstands. It is that of
// an undamped product under a rectangular pulse, and holds for one axis. Pure functions; any thread.
#pragma once

// What the product withstands; judged only where both are above 0 and finite.
struct TFragility {
  double velocityChange;  // ΔVc, m/s
  double acceleration;    // Ac, g

  bool operator==(const TFragility&) const = default;
};

// One event; NaN where it has no pulse.
struct TDamagePoint {
  double velocityChange;  // m/s
  double peak;            // g
};

// The A of A·sin(V/A) = 1, with V the velocity change in ΔVc and A the peak in Ac: 1 from V = π/2 on, infinite up to
// V = 1, NaN for NaN.
double DamageBoundary(double velocity);

// Both limits are above 0 and finite.
bool IsUsable(const TFragility& limits);

// Beyond the curve above.
bool IsDamaging(const TDamagePoint& point, const TFragility& limits);
// Beyond the conservative rectangle: above both limits.
bool IsBeyondBoth(const TDamagePoint& point, const TFragility& limits);
