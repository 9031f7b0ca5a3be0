// The basic types of Apple's Objective-C runtime on x86-64.
#ifndef QZL_OBJC_OBJC_H
#define QZL_OBJC_OBJC_H

typedef struct objc_class *Class;
typedef struct objc_object {
    Class isa;
} *id;
typedef struct objc_selector *SEL;
typedef id (*IMP)(id, SEL, ...);

typedef signed char BOOL;
#define YES ((BOOL)1)
#define NO ((BOOL)0)

#define nil nullptr
#define Nil nullptr

#endif
