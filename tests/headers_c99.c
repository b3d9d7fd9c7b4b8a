/*
 * headers_c99.c - the public headers as a C program sees them: they compile at the strictest
 * setting, and what they declare is there.
 */
#include <stdio.h>
#include <string.h>

#include "accdata.h"
#include "accfile.h"
#include "accsym.h"
#include "common/acccom.h"

static int failures = 0;

static void check(int holds, const char *what) {
    if (holds) return;
    printf("does not hold: %s\n", what);
    failures = 1;
}

int main(void) {
    static const unsigned char sjis[] = {0x82, 0xA0, 0};
    unsigned char code[8];
    unsigned char *const euc = CM_sjis2euc(sjis);
    check(euc != NULL && memcmp(euc, "\xA4\xA2", 3) == 0, "CM_sjis2euc");
    CM_free(euc);
    check(CM_SjisToJis(0x82A0, code) == 4 && memcmp(code, "2422", 5) == 0, "CM_SjisToJis");
    check(___kanjitbl[0x82 + 1] == 3, "___kanjitbl");
    check(CM_strcmp(sjis, sjis) == 0, "CM_strcmp");
    check(sizeof(AccFile) == 1552, "size of AccFile");
    return failures;
}
