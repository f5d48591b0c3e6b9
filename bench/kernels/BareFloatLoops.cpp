#include "BareLoops.h"

#include <algorithm>
#include <cmath>

// Not in an unnamed namespace: the compiler would see who calls what with which values, and change
// the work. What the published text has as common variables is handed on, so that several can run
// at once.
namespace bare {

struct Common {
    double t, t1, t2, e1[5];
    int j, k, l;
};

[[gnu::noinline]] void Pa(const Common* c, double* e)
{
    for (int i = 1; i <= 6; i++) {
        e[1] = (e[1] + e[2] + e[3] - e[4]) * c->t;
        e[2] = (e[1] + e[2] - e[3] + e[4]) * c->t;
        e[3] = (e[1] - e[2] + e[3] + e[4]) * c->t;
        e[4] = (-e[1] + e[2] + e[3] + e[4]) / c->t2;
    }
    asm volatile("" : : : "memory");
}

[[gnu::noinline]] void P0(Common* c)
{
    c->e1[c->j] = c->e1[c->k];
    c->e1[c->k] = c->e1[c->l];
    c->e1[c->l] = c->e1[c->j];
    asm volatile("" : : : "memory");
}

[[gnu::noinline]] void P3(const Common* c, const double* x, const double* y, double* z)
{
    const double x1 = c->t * (*x + *y);
    const double y1 = c->t * (x1 + *y);
    *z = (x1 + y1) / c->t2;
    asm volatile("" : : : "memory");
}

} // namespace bare

namespace {

using namespace bare;

void Arrays(Common* c)
{
    double* e1 = c->e1;
    e1[1] = 1.0;
    e1[2] = e1[3] = e1[4] = -1.0;
    for (int i = 1; i <= 12; i++) {
        e1[1] = (e1[1] + e1[2] + e1[3] - e1[4]) * c->t;
        e1[2] = (e1[1] + e1[2] - e1[3] + e1[4]) * c->t;
        e1[3] = (e1[1] - e1[2] + e1[3] + e1[4]) * c->t;
        e1[4] = (-e1[1] + e1[2] + e1[3] + e1[4]) * c->t;
    }
    for (int i = 1; i <= 14; i++)
        Pa(c, e1);
}

void Integers(Common* c)
{
    int jump = 1;
    for (int i = 1; i <= 345; i++) {
        jump = jump == 1 ? 2 : 3;
        asm volatile("" : "+r"(jump));
        jump = jump > 2 ? 0 : 1;
        asm volatile("" : "+r"(jump));
        jump = jump < 1 ? 1 : 0;
        asm volatile("" : "+r"(jump));
    }
    c->j = 1, c->k = 2, c->l = 3;
    asm volatile("" : : "r"(c) : "memory");
    for (int i = 1; i <= 210; i++) {
        c->j = c->j * (c->k - c->j) * (c->l - c->k);
        c->k = c->l * c->k - (c->l - c->j) * c->k;
        c->l = (c->l - c->k) * (c->k + c->j);
        c->e1[c->l - 1] = c->j + c->k + c->l;
        c->e1[c->k - 1] = c->j * c->k * c->l;
    }
}

void Functions(Common* c, WhetstoneValues& values)
{
    double x = 0.5, y = 0.5, z = 1.0;
    for (int i = 1; i <= 32; i++) {
        x = c->t * atan(c->t2 * sin(x) * cos(x) / (cos(x + y) + cos(x - y) - 1.0));
        y = c->t * atan(c->t2 * sin(y) * cos(y) / (cos(x + y) + cos(x - y) - 1.0));
    }
    values.trigonometricX = x;
    x = y = 1.0;
    for (int i = 1; i <= 899; i++)
        P3(c, &x, &y, &z);
    values.z = z;
    c->j = 1, c->k = 2, c->l = 3;
    c->e1[1] = 1.0, c->e1[2] = 2.0, c->e1[3] = 3.0;
    for (int i = 1; i <= 616; i++)
        P0(c);
    c->j = 2, c->k = 3;
    x = 0.75;
    for (int i = 1; i <= 93; i++)
        x = sqrt(exp(log(x) / c->t1));
    values.standardX = x;
}

double Root(double x)
{
#ifdef __x86_64__
    double root = x;
    asm("sqrtsd %0, %0" : "+x"(root));
    return root == root ? root : sqrt(x);
#else
    return sqrt(x);
#endif
}

inline double F(double x, double omega, int select)
{
    const double power = pow(x + 1.0, x);
    if (select == 0)
        return power;
    return power * (select == 1 ? cos(omega * x) : sin(omega * x));
}

inline double Integral(double x0, double x1, double omega, int select)
{
    const double dx = (x1 - x0) / 200;
    asm volatile("" : "+m"(x0));
    double sum = F(x0, omega, select) / 2;
    for (int step = 1; step < 199; step++) {
        asm volatile("" : "+m"(x0));
        sum += F(x0, omega, select);
    }
    asm volatile("" : "+m"(x0));
    sum += F(x0, omega, select) / 2;
    return sum * dx;
}

} // namespace

bare::WhetstoneValues bare::Whetstone(long rounds)
{
    Common c = {};
    WhetstoneValues values;
    for (long i = 0; i < rounds; i++) {
        c.t = 0.499975, c.t1 = 0.50025, c.t2 = 2.0;
        asm volatile("" : : "r"(&c) : "memory");
        Arrays(&c);
        Integers(&c);
        Functions(&c, values);
    }
    std::copy(c.e1, c.e1 + 5, values.e1);
    return values;
}

double bare::Savage(long rounds)
{
    double a = 1.0;
    for (long i = 0; i < rounds; i++)
        a = tan(atan(exp(log(Root(a * a))))) + 1.0;
    return a;
}

double bare::Fourier(long rounds)
{
    double a[100] = {}, b[100] = {};
    for (long round = 0; round < rounds; round++) {
        a[0] = Integral(0, 2, 0, 0) / 2;
        for (int i = 1; i < 100; i++) {
            a[i] = Integral(0, 2, 3.141592653589793 * i, 1);
            b[i] = Integral(0, 2, 3.141592653589793 * i, 2);
        }
        asm volatile("" : : "r"(a), "r"(b) : "memory");
    }
    return a[0];
}
