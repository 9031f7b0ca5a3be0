// The message-sending entry points on arm64: they preserve every argument register, look the method up, and jump to it.
#include "platform/macho/assembly_arm64.inc"

// Saves the registers that may hold arguments, calls `lookup` with x0 and x1, which hold the receiver and the selector,
// and restores the registers. Leaves the method in x16, and the stack as at a call.
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

// id machoMsgSend(id receiver, SEL selector, ...): nil returns 0, in each register that may hold a result.
    ENTRY machoMsgSend
    cbz x0, 1f
    LOOK_UP machoLookUp
    br x16
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
    br x16
    END machoMsgSendSuper2

    .section .note.GNU-stack, "", @progbits
