// Functions that save different registers, and have frames of different sizes.
#include <cstddef>

namespace {

/// A frame of this size, in a function that calls nothing.
template <size_t Size>
double Stir(const double *numbers, size_t count)
{
    volatile double room[Size];
    for (size_t i = 0; i < Size; ++i)
        room[i] = numbers[i % count];
    double sum = 0;
    for (size_t i = 0; i < Size; ++i)
        sum += room[i] * room[Size - 1 - i];
    return sum;
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

double stirSmall(const double *numbers, size_t count)
{
    return Stir<3>(numbers, count);
}
double stirMore(const double *numbers, size_t count)
{
    return Stir<100>(numbers, count);
}
double stirMost(const double *numbers, size_t count)
{
    return Stir<1000>(numbers, count);
}

#ifdef __aarch64__
/// Saves registers, and calls nothing.
double clobber(double number)
{
    asm volatile("" : : : "x19", "x20", "x27", "x28", "d8", "d9", "d14", "d15");
    return number;
}
#endif

/// Keep integers and numbers in registers across calls, more from function to function.
double keepOne(double (*call)(double), double a)
{
    return call(a) + a;
}
double keepThree(double (*call)(double), double a, double b, double c)
{
    return call(a) + call(b) * a + call(c) * b + c;
}
double keepEight(double (*call)(double), const double *x)
{
    const double a = x[0], b = x[1], c = x[2], d = x[3], e = x[4], f = x[5], g = x[6], h = x[7];
    return call(a) * call(b) + call(a) * b + call(c) * d + call(e) * f + call(g) * h + a + c + e + g + h;
}
long keepIntegers(long (*call)(long), long a, long b, long c, long d, long e, long f)
{
    const long first = call(a), second = call(b), third = call(c), fourth = call(d);
    return first * a + second * b + third * c + fourth * d + call(e) * e + call(f) * f +
           first * second * third * fourth;
}
double keepBoth(double (*call)(double), long (*count)(long), const double *x, long n)
{
    double sum = x[0];
    for (long i = 0; i < n; ++i)
        sum += call(sum) * x[count(i)] + x[i] * static_cast<double>(n);
    return sum;
}

/// Integers in every register, without a call.
long mix(const long *x, long a, long b, long c, long d, long e)
{
    long v[14];
    for (int i = 0; i < 14; ++i)
        v[i] = x[i];
    for (int round = 0; round < 100; ++round) {
#pragma clang loop unroll(full)
        for (int i = 0; i < 14; ++i)
            v[i] = v[(i + 5) % 14] * v[i] + v[(i + 3) % 14] + x[round % 7] + a * b + c * d + e;
    }
    long sum = 0;
    for (const long value : v)
        sum += value;
    return sum + a + b + c + d + e;
}
}
#pragma GCC visibility pop
