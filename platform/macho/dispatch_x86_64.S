// The message-sending entry points on x86-64: they preserve every argument register, look the method up, and jump to it.
    .intel_syntax noprefix
    .text

// Saves the registers that may hold arguments, calls `lookup` with the receiver and the selector, and restores the
// registers. Leaves the method in r11, and the stack aligned as at a call.
    .macro LOOK_UP lookup, first, second
    push rbp
    .cfi_def_cfa_offset 16
    .cfi_offset rbp, -16
    mov rbp, rsp
    .cfi_def_cfa_register rbp
    sub rsp, 192
    mov [rbp - 8], rdi
    mov [rbp - 16], rsi
    mov [rbp - 24], rdx
    mov [rbp - 32], rcx
    mov [rbp - 40], r8
    mov [rbp - 48], r9
    mov [rbp - 56], rax
    movaps [rbp - 80], xmm0
    movaps [rbp - 96], xmm1
    movaps [rbp - 112], xmm2
    movaps [rbp - 128], xmm3
    movaps [rbp - 144], xmm4
    movaps [rbp - 160], xmm5
    movaps [rbp - 176], xmm6
    movaps [rbp - 192], xmm7
    mov rdi, \first
    mov rsi, \second
    call \lookup@PLT
    mov r11, rax
    mov rdi, [rbp - 8]
    mov rsi, [rbp - 16]
    mov rdx, [rbp - 24]
    mov rcx, [rbp - 32]
    mov r8, [rbp - 40]
    mov r9, [rbp - 48]
    mov rax, [rbp - 56]
    movaps xmm0, [rbp - 80]
    movaps xmm1, [rbp - 96]
    movaps xmm2, [rbp - 112]
    movaps xmm3, [rbp - 128]
    movaps xmm4, [rbp - 144]
    movaps xmm5, [rbp - 160]
    movaps xmm6, [rbp - 176]
    movaps xmm7, [rbp - 192]
    leave
    .cfi_def_cfa rsp, 8
    .endm

    .macro ENTRY name
    .globl \name
    .hidden \name
    .type \name, @function
    .p2align 4
\name:
    .cfi_startproc
    .endm

    .macro END name
    .cfi_endproc
    .size \name, . - \name
    .endm

// id machoMsgSend(id receiver, SEL selector, ...): nil returns 0, in each register that may hold a result.
    ENTRY machoMsgSend
    test rdi, rdi
    jz 1f
    LOOK_UP machoLookUp, rdi, rsi
    jmp r11
1:
    xor eax, eax
    xor edx, edx
    pxor xmm0, xmm0
    pxor xmm1, xmm1
    ret
    END machoMsgSend

// void machoMsgSendStret(void *result, id receiver, SEL selector, ...): nil leaves the result as it is.
    ENTRY machoMsgSendStret
    test rsi, rsi
    jz 1f
    LOOK_UP machoLookUp, rsi, rdx
    jmp r11
1:
    mov rax, rdi
    ret
    END machoMsgSendStret

// id machoMsgSendSuper2(struct {id receiver; Class type;} *, SEL selector, ...): the method of the superclass of `type`.
    ENTRY machoMsgSendSuper2
    LOOK_UP machoLookUpSuper, rdi, rsi
    mov rdi, [rdi]
    jmp r11
    END machoMsgSendSuper2

    .section .note.GNU-stack, "", @progbits
