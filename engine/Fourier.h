// Fourier coefficients of (x + 1) to the power x on [0, 2], by trapezoid integration.
#pragma once

class Fourier {
public:
    virtual ~Fourier() = default;

    // Computes 100 pairs of coefficients iterations times; nothing for 0 or less. Of the last ones
    // the first and the last a are kept. Without memory for them: a line on standard error.
    void Run(const int& iterations);

    // a[0] to a[count - 1] and b[1] to b[count - 1]; b[0] stays as it is. count is 1 or more.
    void fpuTransIteration(double* a, double* b, const long& count);

    // A trapezoid's sum over steps (1 or more) that stays at x0, as all published figures were
    // measured with: Function(x0) times the width x1 - x0, less one step's width if there are
    // several. Every evaluation is made.
    double TrapezoidIntegrate(const double& x0, const double& x1, const int& steps,
        const double& omega, const int& select);

    // f(x) = (x + 1)^x for select 0, times cos(omega x) for 1 or sin(omega x) for 2; else 0.
    double Function(const double& x, const double& omega, const int& select);

    double firstA = 0; // of the last iteration of Run()
    double lastA = 0;
};
