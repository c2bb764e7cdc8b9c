#pragma once
// The probability functions behind every p-value of the program. Each takes a statistic and
// its degrees of freedom and returns a probability; a test's p comes with its marker. The methods and their
// low-precision constants are fixed on purpose: the reports print p to three or four
// decimals, and those digits must not move. The computations allocate nothing.

#include <functional>
#include <span>
#include <string_view>

namespace tarvika {

// ---- Markers ---------------------------------------------------------------------------

// "***" for p up to 0.001, "**" up to 0.01, "*" up to 0.05, "+" up to 0.1, else "".
std::string_view SignificanceMarker(double p);

// A p-value with its significance marker, so that a report line prints both from one call.
struct PValue {
  double p = 1;
  std::string_view marker;  // SignificanceMarker(p); points at a literal, never dangles
};
PValue Marked(double p);  // p with SignificanceMarker(p)

// Where the two numerical complaints of BETACF and BETAI go (they never stop the
// computation). By default they are written to stderr; an empty function drops them.
using DiagnosticHook = std::function<void(std::string_view message)>;
void SetDiagnosticHook(DiagnosticHook hook);

// ---- Elementary ------------------------------------------------------------------------

double Power(double x, double y);  // exp(y ln x), x > 0
double IntPower(double x, int k);  // x multiplied k times into 1
double LnGamma(double x);          // six-term Lanczos series, x > 0

// Continued fraction of the incomplete beta function (at most 100 rounds, tolerance 3e-7).
double BETACF(double a, double b, double x);
// Regularised incomplete beta I_x(a, b).
double BETAI(double a, double b, double x);

// ---- Continuous distributions ----------------------------------------------------------

double NormalCdf(double z);                          // P(Z <= z), five-term polynomial
PValue NormalP2(double z);                           // two-sided
PValue StudentP2(double t, double df);               // two-sided
PValue CorrelationP2(double r, int df);              // two-sided
double FProbBeta(double f, double df1, double df2);  // upper tail by BETAI
PValue FProb(double f, double df1, double df2);      // upper tail
PValue ChiSquareP(double x, int df);                 // upper tail
// The chi-square value whose upper tail is 0.1, 0.05, 0.01, 0.001 for index 1 to 4.
double ChiSquareCritical(int index, int df);
PValue KolmogorovP(double d);  // upper tail

// ---- Discrete and exact ----------------------------------------------------------------

double BinomialHalfTerm(int k, int n);                  // C(n, k) / 2^n
double BinomialTerm(int k, int n, double p, double q);  // C(n, k) p^k q^(n-k)
// The binomial tail from k away from the mean np, cut after the first term below 0.0001.
double BinomialTail(int k, int n, double p, double np);

// The sign test of k cases on one side among n: z (negative when k is below n/2) and the
// two-sided p. For n below 2 there is no test: z = 0, p = 1.
struct SignTestP2 {
  double z = 0;
  PValue p;
};
SignTestP2 SignTestP(int k, int n);

// Two-sided exact signed-rank p for n from 2 to 20: twice the share of the 2^n sign
// patterns of ranks[0..n-1] whose sum of positive ranks is at most t, and the number of
// those patterns. Outside 2..20 p is 1 and nothing is counted.
struct EnumeratedP {
  PValue p;
  double patterns = 0;
};
EnumeratedP WilcoxonExactP(int n, double t, std::span<const double> ranks);

// Two-sided exact p of the 2 by 2 table (a b / c d) and the probability of the table itself.
struct FisherResult {
  double p2 = 1;
  double pTable = 1;
};
FisherResult FisherExactP2(int a, int b, int c, int d);

}  // namespace tarvika
