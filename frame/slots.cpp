// The exports of the static library, which holds the code of every processor level: each export jumps through a slot.
//
// A slot starts with the code that every processor can run, and is set once, at load, to that of the widest level which
// this one has. A call tests nothing, and one that comes before that moment, from another constructor, is right as
// well: all levels give the same bits. (An indirect function of the linker would do the same, but not in the C
// libraries that have none, and those have no folders of processor levels either: they are what the static library is
// for.)
#include <cstddef>

// The addresses of an export's code, level by level: the first is the slot. Its section belongs to the export's own
// (flag o), so that a link with --gc-sections drops what is not called.
asm(".macro slot name\n"
    ".section .text.\\name, \"ax\", @progbits\n"
    ".globl \\name\n"
    ".type \\name, @function\n"
    "\\name:\n"
    ".cfi_startproc\n"
    "    endbr64\n"
    "    jmp *1f(%rip)\n"
    ".cfi_endproc\n"
    ".size \\name, . - \\name\n"
    ".section moxcc_slots, \"awo\", @progbits, .text.\\name\n"
    ".balign 8\n"
    "1:\n"
    "    .irp level, " MOXCC_LEVELS
    "\n"
    "    .hidden \\name\\()_\\level\n"
    "    .quad \\name\\()_\\level\n"
    "    .endr\n"
    ".text\n"
    ".endm\n");
#define SLOT(name) asm("slot " #name "\n");
#include "slots.inc"

namespace {

extern "C" {
// The linker's names for the ends of that section; null if no export is called.
[[gnu::weak, gnu::visibility("hidden")]] extern void* __start_moxcc_slots[];
[[gnu::weak, gnu::visibility("hidden")]] extern void* __stop_moxcc_slots[];
}

[[gnu::constructor]] void setSlots() {
    __builtin_cpu_init();
    const int has[] = {MOXCC_LEVEL_TESTS};
    constexpr size_t levels = sizeof has / sizeof has[0];
    size_t widest = 0;
    while (widest + 1 < levels && has[widest + 1]) ++widest;
    for (void** slot = __start_moxcc_slots; slot < __stop_moxcc_slots; slot += levels) slot[0] = slot[widest];
}

}  // namespace
