/*
 * browse.c - the smallest host: opens the standard set and prints the titles of its first
 * list with a mark on those that have titles below them. Text comes out in Shift_JIS:
 *
 *     browse PROGRAM_DIRECTORY | iconv -f CP932 -t UTF-8
 */
#include <stdio.h>
#include <string.h>

#include "accsym.h"

static unsigned char result[ACC_SIZE_RESULT], display[ACC_SIZE_DISPLAY];
static unsigned char message[ACC_SIZE_MESSAGE], status[ACC_SIZE_MESSAGE];
static unsigned char level[ACC_LISTBOX_MAX][ACC_SIZE_LB_LEVEL];
static unsigned char items[ACC_LISTBOX_MAX][ACC_SIZE_LB_LIST];
static unsigned char attributes[ACC_LISTBOX_MAX][ACC_SIZE_LB_LISTINFO];
static unsigned char codes[ACC_LISTBOX_MAX][ACC_SIZE_LB_ITEMINFO];

int main(int argc, char **argv) {
    static unsigned char standard[] = "\x95\x57\x8F\x80\x82\xCC\x8B\x4C\x8D\x86"; /* 標準の記号 */
    static Accdata record;
    const ListBox *const first = &record.tListBox[0];
    const unsigned char *item;
    int i;

    if (argc != 2) {
        fprintf(stderr, "usage: %s PROGRAM_DIRECTORY\n", argv[0]);
        return 2;
    }
    record.lpchResult = result;
    record.lpchDisplay = display;
    record.lpchMessage = message;
    record.lpchStatus = status;
    for (i = 0; i < ACC_LISTBOX_MAX; i++) {
        record.tListBox[i].lpchLBLevel = level[i];
        record.tListBox[i].lpchLBList = items[i];
        record.tListBox[i].lpchLBListInfo = attributes[i];
        record.tListBox[i].lpchLBItemInfo = codes[i];
    }

    record.wVkey = ACC_VKEY_FILE_OPEN;
    record.lpchString1 = standard;
    record.lpchString2 = record.lpchString3 = record.lpchString4 = (unsigned char *)argv[1];
    if (AccSym(&record) != ACC_RET_OK) {
        fprintf(stderr, "%s\n", message);
        return 1;
    }
    item = first->lpchLBList;
    for (i = 0; i < first->cchLBItemTotal; i++) {
        const char *const text = (const char *)item + first->cchLBItemHead - 1;
        printf("%c %s\n", first->lpchLBListInfo[i] & LBINFO_CHILD ? '+' : ' ', text);
        item += strlen((const char *)item) + 1;
        if (*item == 0) item++;
    }
    record.wVkey = ACC_VKEY_FILE_CLOSE;
    return AccSym(&record) == ACC_RET_OK ? 0 : 1;
}
