// The basic types of Apple's Objective-C runtime.
#ifndef QZL_OBJC_OBJC_H
#define QZL_OBJC_OBJC_H

typedef struct objc_class *Class;
typedef struct objc_object {
    Class isa;
} *id;
typedef struct objc_selector *SEL;
typedef id (*IMP)(id, SEL, ...);

/// The compiler says which type it is on the processor.
#if __OBJC_BOOL_IS_BOOL
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES ((BOOL)1)
#define NO ((BOOL)0)

#define nil nullptr
#define Nil nullptr

#endif
