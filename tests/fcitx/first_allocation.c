/* Preloaded behind the runtime of the address sanitizer, and initialised before every other
   library: the runtime starts with the first allocation, which would otherwise be that of
   libgpg-error in bindtextdomain. Its start asks gettext for the text of an error, and so gives up
   the lock of gettext that is held there; fcitx5 then waits for that lock for ever. */
#include <stdlib.h>

__attribute__((constructor)) static void allocate(void) {
    free(malloc(1));
}
