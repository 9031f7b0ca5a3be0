// Functions of variable arguments for code of an image: macOS's callers put those on the stack alone.
#include "platform/macho/assembly_arm64.inc"

// Calls `function` with the fixed arguments, and with the address of the others in the register behind these.
    .macro ON_STACK name, function, register
    ENTRY \name
    mov \register, sp
    b \function
    END \name
    .endm

    ON_STACK machoLog, machoLogFromStack, x1
    ON_STACK machoFormat, machoFormatFromStack, x3
    ON_STACK machoFormatChecked, machoFormatCheckedFromStack, x5
    ON_STACK machoFormatCheckedUnbounded, machoFormatCheckedUnboundedFromStack, x4

    .section .note.GNU-stack, "", @progbits
