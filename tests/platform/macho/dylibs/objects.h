// Structures that methods of the test dylibs return: one for each way of returning a result.
#pragma once

struct TwoIntegers {
    long first, second;
};

struct TwoNumbers {
    double first, second;
};

struct IntegerAndNumber {
    long integer;
    double number;
};

struct FourFloats {
    float values[4];
};

struct FiveIntegers {
    long values[5];
};
