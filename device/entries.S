@ Where the platform enters the library. The platform promises a stack aligned to four bytes only; the code inside counts
@ on eight, so both entries align it and give the caller's stack back.

    .syntax unified
    .arm

    .macro aligned_entry name, target, stack_words
    .section .text.\name, "ax", %progbits
    .globl \name
    .type \name, %function
\name:
    .fnstart
    .cantunwind                     @ what is thrown inside is caught inside
    stmfd sp!, {r4, lr}
    mov r4, sp
    bic sp, sp, #7
    .if \stack_words
    ldr ip, [r4, #8]                @ the fifth argument lies above the two saved words
    sub sp, sp, #8
    str ip, [sp]
    .endif
    bl \target
    mov sp, r4
    ldmfd sp!, {r4, pc}             @ the library is ARM code throughout: no return to Thumb
    .fnend
    .size \name, . - \name
    .endm

    aligned_entry libraryEntry, attachOrDetach, 0
    aligned_entry exportEntry, rsCeApiMgr, 1
