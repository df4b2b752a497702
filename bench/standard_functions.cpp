// The C library's functions under the names of ours, for the plain form of the step as it is measured. They
// are faster and differ from system to system.
#include <cmath>

#include "morphology/elementary.hpp"

namespace nivaro {

double logarithm(double x) {
  return std::log(x);
}
double decimalLogarithm(double x) {
  return std::log10(x);
}
double exponential(double x) {
  return std::exp(x);
}
double power(double x, double exponent) {
  return std::pow(x, exponent);
}
double cubeRoot(double x) {
  return std::cbrt(x);
}

}  // namespace nivaro
