#pragma once

#include <array>
#include <cstddef>

#include "engine/results_table.h"

namespace skyhop::testing {

/// 24 hourly values for the hours 1 to 24.
using Day = std::array<float, 24>;

/// A table without results.
inline ResultsTable EmptyResult() {
  return {};
}

/// Fills a row of a table; hour 0 is a copy of hour 24.
inline void SetRow(std::array<float, kHourCount>& row, const Day& values) {
  for (std::size_t hour = 1; hour < kHourCount; ++hour) row[hour] = values[hour - 1];
  row[0] = row[24];
}

/// A table in which every hour has the same LUF and MUFs at 90, 50 and 10 % confidence.
inline ResultsTable ConstantResult(float luf, float muf90, float muf50, float muf10) {
  ResultsTable table = EmptyResult();
  table.frequencies[rows::kLuf].fill(luf);
  table.frequencies[rows::kMuf90].fill(muf90);
  table.frequencies[rows::kMuf50].fill(muf50);
  table.frequencies[rows::kMuf10].fill(muf10);
  return table;
}

/// New York to London, November 2026, sunspot number 105, as predicted by VOACAP's LUF/MUF mode.
inline ResultsTable NewYorkLondon() {
  ResultsTable table = EmptyResult();
  SetRow(table.frequencies[rows::kMuf90],
         {8.16F,  8.50F,  8.87F,  8.66F,  8.06F,  6.80F,  7.08F,  7.98F,
          8.99F,  11.35F, 13.70F, 18.05F, 21.58F, 23.18F, 23.74F, 23.06F,
          22.02F, 19.05F, 15.70F, 13.00F, 10.89F, 9.41F,  8.45F,  8.09F});
  SetRow(table.frequencies[rows::kMuf10],
         {13.19F, 13.74F, 14.34F, 14.00F, 12.40F, 10.47F, 10.89F, 12.27F,
          13.84F, 17.46F, 24.46F, 32.23F, 38.53F, 41.40F, 39.56F, 38.43F,
          34.51F, 29.86F, 24.62F, 20.37F, 17.45F, 15.09F, 13.55F, 12.96F});
  SetRow(table.frequencies[rows::kMuf50],
         {11.18F, 11.65F, 12.15F, 11.87F, 10.33F, 8.72F,  9.07F,  10.22F,
          11.53F, 14.55F, 19.57F, 25.79F, 30.82F, 33.12F, 32.97F, 32.02F,
          29.75F, 25.74F, 21.22F, 17.56F, 14.91F, 12.90F, 11.58F, 11.08F});
  SetRow(table.frequencies[rows::kLuf],
         {2.16F, 2.17F, 2.13F, 2.04F, 2.00F, 2.00F, 2.14F, 5.64F, 2.42F, 3.83F, 4.56F, 5.65F,
          6.96F, 7.29F, 9.52F, 9.42F, 7.43F, 5.51F, 4.76F, 4.31F, 2.69F, 2.47F, 2.27F, 2.23F});
  table.f_min = 2;
  table.f_max = 42;
  return table;
}

/// The same path and date, as predicted by VOACAP's signal-to-noise mode.
inline ResultsTable NewYorkLondonReliability() {
  ResultsTable table = EmptyResult();
  SetRow(table.frequencies[rows::kMuf50],
         {11.2F, 11.6F, 12.2F, 11.9F, 10.3F, 8.7F,  9.1F,  10.2F, 11.5F, 14.6F, 19.6F, 25.8F,
          30.8F, 33.1F, 33.0F, 32.0F, 29.8F, 25.7F, 21.2F, 17.6F, 14.9F, 12.9F, 11.6F, 11.1F});
  SetRow(table.frequencies[rows::kMuf90],
         {8.2F,  8.5F,  8.9F,  8.7F,  8.1F,  6.8F,  7.1F,  8.0F,  9.0F,  11.4F, 13.7F, 18.1F,
          21.6F, 23.2F, 23.7F, 23.1F, 22.0F, 19.0F, 15.7F, 13.0F, 10.9F, 9.4F,  8.5F,  8.1F});
  SetRow(table.reliability[1],
         {0.64F, 0.62F, 0.64F, 0.75F, 0.86F, 0.87F, 0.85F, 0.78F, 0.21F, 0.00F, 0.00F, 0.00F,
          0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.15F, 0.41F, 0.59F, 0.63F});
  SetRow(table.reliability[2],
         {0.85F, 0.83F, 0.83F, 0.91F, 0.96F, 0.95F, 0.96F, 0.98F, 0.88F, 0.52F, 0.01F, 0.00F,
          0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.05F, 0.45F, 0.70F, 0.78F, 0.87F, 0.90F});
  SetRow(table.reliability[3],
         {0.89F, 0.88F, 0.88F, 0.93F, 0.97F, 0.91F, 0.95F, 0.98F, 0.95F, 0.85F, 0.57F, 0.03F,
          0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.18F, 0.58F, 0.75F, 0.85F, 0.87F, 0.91F, 0.92F});
  SetRow(table.reliability[4],
         {0.85F, 0.86F, 0.87F, 0.88F, 0.84F, 0.34F, 0.46F, 0.81F, 0.85F, 0.92F, 0.85F, 0.74F,
          0.39F, 0.15F, 0.11F, 0.24F, 0.63F, 0.76F, 0.84F, 0.88F, 0.88F, 0.84F, 0.83F, 0.82F});
  SetRow(table.reliability[5],
         {0.01F, 0.05F, 0.18F, 0.11F, 0.00F, 0.00F, 0.00F, 0.00F, 0.04F, 0.79F, 0.85F, 0.89F,
          0.84F, 0.69F, 0.79F, 0.82F, 0.86F, 0.89F, 0.89F, 0.86F, 0.82F, 0.35F, 0.01F, 0.00F});
  SetRow(table.reliability[6],
         {0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.01F, 0.82F, 0.88F,
          0.81F, 0.88F, 0.89F, 0.89F, 0.91F, 0.90F, 0.88F, 0.59F, 0.01F, 0.00F, 0.00F, 0.00F});
  SetRow(table.reliability[7],
         {0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.51F, 0.87F,
          0.89F, 0.89F, 0.90F, 0.90F, 0.91F, 0.90F, 0.79F, 0.01F, 0.00F, 0.00F, 0.00F, 0.00F});
  SetRow(table.reliability[8],
         {0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.03F, 0.81F,
          0.88F, 0.89F, 0.89F, 0.90F, 0.90F, 0.85F, 0.04F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F});
  SetRow(table.reliability[9],
         {0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.48F,
          0.86F, 0.88F, 0.88F, 0.89F, 0.87F, 0.35F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F});
  SetRow(table.reliability[10],
         {0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F,
          0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F, 0.00F});
  table.f_min = 3;
  table.f_max = 34;
  return table;
}

}  // namespace skyhop::testing
