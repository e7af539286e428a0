// Adaptive integration of several functions of one variable at once.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace bench::kernel {

template <std::size_t N>
using Values = std::array<double, N>;

template <std::size_t N>
void AddTo(Values<N>& sum, const Values<N>& addend, double factor = 1) {
  for (std::size_t i = 0; i < N; ++i) sum[i] += factor * addend[i];
}

namespace integration_detail {

// Gauss's rule of ten points over [-1, 1].
inline constexpr std::array<double, 5> kNodes = {
    0.14887433898163122, 0.43339539412924719, 0.67940956829902441, 0.86506336668898451, 0.97390652851717172};
inline constexpr std::array<double, 5> kWeights = {
    0.29552422471475287, 0.26926671930999636, 0.21908636251598204, 0.14945134915058059, 0.06667134430868814};

template <std::size_t N, typename Function>
Values<N> Rule(const Function& function, double from, double to) {
  const double middle = (from + to) / 2, half = (to - from) / 2;
  Values<N> sum{};
  for (std::size_t i = 0; i < kNodes.size(); ++i) {
    AddTo(sum, function(middle - half * kNodes[i]), kWeights[i] * half);
    AddTo(sum, function(middle + half * kNodes[i]), kWeights[i] * half);
  }
  return sum;
}

template <std::size_t N, typename Function>
Values<N> Refine(const Function& function, double from, double to, const Values<N>& whole,
                 const Values<N>& tolerances, int halvings) {
  const double middle = (from + to) / 2;
  const Values<N> left = Rule<N>(function, from, middle), right = Rule<N>(function, middle, to);
  Values<N> sum = left;
  AddTo(sum, right);
  bool settled = true;
  for (std::size_t i = 0; i < N; ++i) settled = settled && std::abs(sum[i] - whole[i]) <= tolerances[i];
  if (settled || halvings == 0) return sum;
  sum = Refine<N>(function, from, middle, left, tolerances, halvings - 1);
  AddTo(sum, Refine<N>(function, middle, to, right, tolerances, halvings - 1));
  return sum;
}

}  // namespace integration_detail

// The integrals from `from` to `to` of the N functions that `function` gives together. Intervals are halved
// until for each function the halves agree with the whole to its tolerance.
template <std::size_t N, typename Function>
Values<N> Integrate(const Function& function, double from, double to, const Values<N>& tolerances) {
  constexpr int kHalvings = 12;
  const Values<N> whole = integration_detail::Rule<N>(function, from, to);
  return integration_detail::Refine<N>(function, from, to, whole, tolerances, kHalvings);
}

// The same for functions that are polynomials of the third degree at most, exactly.
template <std::size_t N, typename Function>
Values<N> IntegrateCubic(const Function& function, double from, double to) {
  constexpr double kNode = 0.57735026918962576;  // Gauss's rule of two points
  const double middle = (from + to) / 2, half = (to - from) / 2;
  Values<N> sum{};
  AddTo(sum, function(middle - half * kNode), half);
  AddTo(sum, function(middle + half * kNode), half);
  return sum;
}

}  // namespace bench::kernel
