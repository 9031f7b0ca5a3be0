// The message-sending entry points on arm64: they preserve every argument register, look the method up, and jump to it. A
// method whose result has less than 32 bits is called instead, and its result extended: macOS's callers trust in that,
// which Linux's methods need not do.
#include "platform/macho/assembly_arm64.inc"

// Saves the registers that may hold arguments, calls `lookup` with x0 and x1, which hold the receiver and the selector,
// and restores the registers. Leaves the method in x16, its extension in x17, and the stack as at a call.
    .macro LOOK_UP lookup
    stp x29, x30, [sp, #-224]!
    .cfi_def_cfa_offset 224
    .cfi_offset x29, -224
    .cfi_offset x30, -216
    mov x29, sp
    .cfi_def_cfa_register x29
    stp q0, q1, [sp, #16]
    stp q2, q3, [sp, #48]
    stp q4, q5, [sp, #80]
    stp q6, q7, [sp, #112]
    stp x0, x1, [sp, #144]
    stp x2, x3, [sp, #160]
    stp x4, x5, [sp, #176]
    stp x6, x7, [sp, #192]
    str x8, [sp, #208]
    bl \lookup
    mov x16, x0
    mov x17, x1
    ldp q0, q1, [sp, #16]
    ldp q2, q3, [sp, #48]
    ldp q4, q5, [sp, #80]
    ldp q6, q7, [sp, #112]
    ldp x0, x1, [sp, #144]
    ldp x2, x3, [sp, #160]
    ldp x4, x5, [sp, #176]
    ldp x6, x7, [sp, #192]
    ldr x8, [sp, #208]
    ldp x29, x30, [sp], #224
    .cfi_def_cfa sp, 0
    .cfi_restore x29
    .cfi_restore x30
    .endm

// Runs the method in x16, and extends its result as x17 says.
    .macro RUN
    cbnz x17, 2f
    br x16
2:
    stp x29, x30, [sp, #-32]!
    .cfi_def_cfa_offset 32
    .cfi_offset x29, -32
    .cfi_offset x30, -24
    mov x29, sp
    str x17, [sp, #16]
    blr x16
    ldr x17, [sp, #16]
    ldp x29, x30, [sp], #32
    .cfi_def_cfa_offset 0
    .cfi_restore x29
    .cfi_restore x30
    lsl w0, w0, w17
    tbnz w17, #31, 3f
    asr w0, w0, w17
    ret
3:
    lsr w0, w0, w17
    ret
    .endm

// id machoMsgSend(id receiver, SEL selector, ...): nil returns 0, in each register that may hold a result.
    ENTRY machoMsgSend
    cbz x0, 1f
    LOOK_UP machoLookUp
    RUN
1:
    mov x1, #0
    movi v0.2d, #0
    movi v1.2d, #0
    movi v2.2d, #0
    movi v3.2d, #0
    ret
    END machoMsgSend

// The address of a large result is in x8, which is no argument: the plain entry point serves all results. macOS exports
// this name, but no compiler for arm64 calls it.
    ENTRY machoMsgSendStret
    b machoMsgSend
    END machoMsgSendStret

// id machoMsgSendSuper2(struct {id receiver; Class type;} *, SEL selector, ...): the method of the superclass of `type`.
    ENTRY machoMsgSendSuper2
    LOOK_UP machoLookUpSuper
    ldr x0, [x0]
    RUN
    END machoMsgSendSuper2

    .section .note.GNU-stack, "", @progbits
