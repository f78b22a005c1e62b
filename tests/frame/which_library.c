/* Prints the path of the library file that the dynamic linker chose for this program. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdio.h>

#include "moxcc/version.h"

int main(void) {
    Dl_info info;
    if (!dladdr((const void*)moxccGetLibVersion(), &info)) return 1;
    puts(info.dli_fname);
    return 0;
}
