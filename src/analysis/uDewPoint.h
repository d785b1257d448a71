// The dew point as the loggers' own tools compute it.
#pragma once

// °C from a temperature in °C and a relative humidity in %; NaN where the formula takes the logarithm of nothing.
// Kept on purpose: the vapour-pressure step multiplies by 7.5·T/(T + 237.7) instead of raising 10 to that power, so
// that the values match the loggers' files and reports.
float DewPoint(float temperature, float humidity);

// The dew point as tables store it: rounded to two decimals, halves away from zero.
float RoundedDewPoint(float temperature, float humidity);
