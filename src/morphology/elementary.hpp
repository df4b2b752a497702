// Logarithms, exponentials, powers and cube roots that are the same to the last bit on every system. C
// libraries differ there, and one cell in a hundred of a random grid with them.
#pragma once

namespace nivaro {

// Within 0.51 units in the last place, powers for exponents to 25. Zero, what is infinite or no number,
// and what leaves the normal range are what the standard functions make of them.
double logarithm(double x);
double decimalLogarithm(double x);
double exponential(double x);
double power(double x, double exponent);
double cubeRoot(double x);

}  // namespace nivaro
