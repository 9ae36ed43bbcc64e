// Number-to-text and text-to-number conversions: the data views and the chart files write
// every value of a table through a pattern, and every reader converts fields back.
#include "shell/TextFormat.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

std::vector<double> sampleValues()
{
    std::vector<double> v;
    for (int i = 0; i < 1024; ++i) {
        v.push_back(std::pow(10.0, (i % 60) - 30) * (1.0 + i * 0.000731) * (i % 7 == 0 ? -1 : 1));
    }
    return v;
}

void FormatScientific(benchmark::State& state)
{
    const auto values = sampleValues();
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            zarvion::shell::Format(values[k++ & 1023], "0.00000000E+00"));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(FormatScientific);

void FormatFixed(benchmark::State& state)
{
    const auto values = sampleValues();
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(zarvion::shell::Format(values[k++ & 1023], "0.##"));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(FormatFixed);

void ShortestText(benchmark::State& state)
{
    const auto values = sampleValues();
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(zarvion::shell::ShortestText(values[k++ & 1023]));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ShortestText);

void ToDouble(benchmark::State& state)
{
    std::vector<std::string> fields;
    for (double v : sampleValues()) {
        fields.push_back(zarvion::shell::Format(v, " 0.000000000E+00"));
    }
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(zarvion::shell::ToDouble(fields[k++ & 1023]));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ToDouble);

} // namespace

BENCHMARK_MAIN();
