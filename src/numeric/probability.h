#pragma once
// The probability functions behind every p-value of the program. Each takes a statistic and
// its degrees of freedom and returns a probability as a double. The methods and their
// low-precision constants are fixed on purpose: the reports print p to three or four
// decimals, and those digits must not move. The computations allocate nothing.

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace tarvika {

// ---- Markers ---------------------------------------------------------------------------

// "***" for p up to 0.001, "**" up to 0.01, "*" up to 0.05, "+" up to 0.1, else "".
std::string_view SignificanceMarker(double p);
void SignificanceMarker(double p, std::string& marker);

// The marker of the last p-value function that sets one (see each function), so that a
// report line can print p and its marker without a further call. At most 3 characters.
const std::string& LastMarker();
// The number of sign patterns the last WilcoxonExactP counted.
double LastEnumerationCount();

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
double NormalP2(double z);                           // two-sided; sets LastMarker
double StudentP2(double t, double df);               // two-sided; sets LastMarker
double CorrelationP2(double r, int df);              // two-sided; sets LastMarker
double FProbBeta(double f, double df1, double df2);  // upper tail by BETAI
double FProb(double f, double df1, double df2);      // upper tail; sets LastMarker
double ChiSquareP(double x, int df);                 // upper tail; sets LastMarker
// The chi-square value whose upper tail is 0.1, 0.05, 0.01, 0.001 for index 1 to 4.
double ChiSquareCritical(int index, int df);
double KolmogorovP(double d);  // upper tail; sets LastMarker

// ---- Discrete and exact ----------------------------------------------------------------

double BinomialHalfTerm(int k, int n);                  // C(n, k) / 2^n
double BinomialTerm(int k, int n, double p, double q);  // C(n, k) p^k q^(n-k)
// The binomial tail from k away from the mean np, cut after the first term below 0.0001.
double BinomialTail(int k, int n, double p, double np);

// The sign test of k cases on one side among n. z and p are filled (left as they are for
// n below 2), marker gets the significance marker of p (empty for n below 2).
void SignTestP(int k, int n, double& z, double& p, std::string& marker);

// Two-sided exact signed-rank p for n from 2 to 20: twice the share of the 2^n sign
// patterns of ranks[0..n-1] whose sum of positive ranks is at most t. Sets
// LastEnumerationCount. Outside 2..20 it returns 1 and counts nothing.
double WilcoxonExactP(int n, double t, std::span<const double> ranks);

// Two-sided exact p of the 2 by 2 table (a b / c d) and the probability of the table itself.
struct FisherResult {
  double p2 = 1;
  double pTable = 1;
};
FisherResult FisherExactP2(int a, int b, int c, int d);

}  // namespace tarvika
