// Structures that methods of the test dylibs answer, one for each way in which results are returned.
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
