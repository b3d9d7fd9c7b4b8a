/*
 * accdata.h - the request record that passes between a host and the library,
 * with the result codes and bit values that go with it.
 *
 * Invariants
 *  1. Every string is Shift_JIS ended by a NUL; every length counts bytes.
 *  2. Every buffer belongs to the host. The library never allocates, frees or
 *     resizes one, keeps no pointer into one after a call, and cannot see how
 *     large one is: ACC_SIZE_* below state the least size of each.
 *  3. List numbers are 1-based (wCurrentList 1 is tListBox[0]).
 */
#ifndef ACCSYM_ACCDATA_H
#define ACCSYM_ACCDATA_H

#ifdef __cplusplus
extern "C" {
#endif

/** Number of list boxes, and so of the levels of a title tree that can be shown. */
#define ACC_LISTBOX_MAX 10

/*
 * Least sizes of the host's buffers, in bytes. Given these, no symbol file,
 * however made, and no list geometry makes the library write past a buffer.
 * lpchLBTitle has no size here: it must hold the longest caption that the host
 * itself passes with ACC_VKEY_SET_ATTRIBUTE, with its NUL.
 */
#define ACC_SIZE_MESSAGE 80          /**< lpchMessage */
#define ACC_SIZE_RESULT 3            /**< lpchResult: one double-byte character and its NUL */
#define ACC_SIZE_DISPLAY 65536       /**< lpchDisplay */
#define ACC_SIZE_LB_LEVEL 515        /**< lpchLBLevel: the longest full path and its NUL */
#define ACC_SIZE_LB_LIST (65536 + 2) /**< lpchLBList */
#define ACC_SIZE_LB_LISTINFO 32768   /**< lpchLBListInfo */
#define ACC_SIZE_LB_ITEMINFO 16      /**< lpchLBItemInfo */

/** Result codes of AccSym, signed 32-bit. */
enum {
    ACC_RET_NOTFOUND = -1, /**< set-position: no such title; save: writing the file failed */
    ACC_RET_ERROR = 0,     /**< failed; lpchMessage says why (a few queries fail without a text) */
    ACC_RET_OK = 1,        /**< done */
    ACC_RET_NONE = 2,      /**< nothing was done: unknown command, end of a list, or a failed edit,
                                which leaves its text in lpchMessage */
    ACC_RET_LBMEMORY = 4   /**< open refused: the title tree is deeper than ACC_LISTBOX_MAX */
};

/** Bits of wDataStatus and wDataUpdate: which outputs are valid, which changed. */
enum {
    ACCDATA_LIST = 8,     /**< the list boxes must be redrawn */
    ACCDATA_DISPLAY = 16, /**< lpchDisplay holds a fresh list of strings */
    ACCDATA_RESULT = 128  /**< lpchResult holds a decision */
};

/** Bits of an attribute byte in lpchLBListInfo. A title is 2 or 3, a symbol is 4. */
enum {
    LBINFO_CHILD = 1, /**< the title has child titles */
    LBINFO_TITLE = 2, /**< the item is a title */
    LBINFO_SYMBOL = 4 /**< the item is a symbol */
};

/** Command codes for Accdata.wVkey. Any other value answers ACC_RET_NONE. */
enum {
    ACC_VKEY_DECISION = 8,        /**< take the current symbol as the result */
    ACC_VKEY_NEXT_BLOCK = 12,     /**< next page of the current list */
    ACC_VKEY_RIGHT_ITEM = 13,     /**< descend into the current title */
    ACC_VKEY_LEFT_ITEM = 14,      /**< focus back to the list before */
    ACC_VKEY_FILE_OPEN = 22,      /**< open the symbol file titled lpchString1 */
    ACC_VKEY_FILE_CLOSE = 31,     /**< close it, dropping unsaved edits */
    ACC_VKEY_DATA_REGISTER = 42,  /**< replace the symbols of the title shown */
    ACC_VKEY_BEFORE_BLOCK = 50,   /**< previous page of the current list */
    ACC_VKEY_BEFORE_ITEM = 55,    /**< previous item of the current list */
    ACC_VKEY_NEXT_ITEM = 67,      /**< next item of the current list */
    ACC_VKEY_GET_INFO = 132,      /**< codes of the current symbol into lpchLBItemInfo */
    ACC_VKEY_FILE_NEW = 133,      /**< close, then a new symbol file titled lpchString1 */
    ACC_VKEY_FILE_SAVE = 134,     /**< save the open file under the title lpchString1 */
    ACC_VKEY_FILE_DELETE = 135,   /**< delete the symbol file titled lpchString1 */
    ACC_VKEY_TITLE_ADD = 136,     /**< add the title lpchString1 below the one shown */
    ACC_VKEY_TITLE_CHANGE = 137,  /**< rename the title shown to lpchString1 */
    ACC_VKEY_TITLE_DELETE = 138,  /**< delete the title shown and all below it */
    ACC_VKEY_FILE_CHECK = 139,    /**< does a symbol file titled lpchString1 exist? */
    ACC_VKEY_TREE_TITLES = 140,   /**< every title path of the open file into lpchDisplay */
    ACC_VKEY_GET_EDIT = 141,      /**< has the open file unsaved edits? */
    ACC_VKEY_SET_ATTRIBUTE = 142, /**< caption and list geometry */
    ACC_VKEY_SET_POSITION = 143,  /**< position the lists on the title path lpchString1 */
    ACC_VKEY_FILE_TITLES = 144,   /**< every symbol file title into lpchDisplay */
    ACC_VKEY_FILE_CONVERT = 145   /**< append the old-format file lpchString1 */
};

/**
 * One list box: the child titles of the title it shows, then that title's symbols.
 *
 * lpchLBList holds all items, not only the visible page. An item is a header of
 * cchLBItemHead - 1 bytes (none for 0 and 1), the text, a NUL and, unless
 * cchLBItemHead is 0, one more NUL. The text of a title is its full path, the text
 * of a symbol its two Shift_JIS bytes.
 */
typedef struct ListBox {
    unsigned char *lpchLBTitle;    /**< caption; may be null */
    unsigned char *lpchLBLevel;    /**< full path of the title shown, set for the current list */
    unsigned short cchLBListLen;   /**< bytes used in lpchLBList */
    unsigned char *lpchLBList;     /**< the items, packed */
    unsigned char *lpchLBListInfo; /**< one LBINFO_ byte per item */
    unsigned short cchLBItemPageFirst; /**< 1-based number of the first item of the page */
    unsigned short cchLBItemTotal;     /**< items in the list, titles and symbols together */
    unsigned short cchLBItemNum;       /**< cursor on the page, 1-based; 0: no current item */
    unsigned short cchLBItemNumMax;    /**< items per page; 0: the list is not paged */
    unsigned short cchLBItemLenMax;    /**< item length for the host's use, bytes */
    unsigned short cchLBItemHead;      /**< header setting: 0 and 1 none, else header bytes + 1 */
    unsigned short cchLBItemInfoSize;  /**< bytes used in lpchLBItemInfo: 0 or 15 */
    unsigned char *lpchLBItemInfo;     /**< Shift_JIS, JIS and kuten of the current symbol as text,
                                            NUL-ended, at bytes 0, 5 and 10 */
} ListBox;

/** The record of one command. */
typedef struct Accdata {
    unsigned short wDataStatus;  /**< ACCDATA_ bits: outputs that are valid */
    unsigned short wDataUpdate;  /**< ACCDATA_ bits: outputs that this command changed */
    unsigned char *lpchString1;  /**< title, path, file title or data, by command */
    unsigned char *lpchString2;  /**< open: user directory; set-attribute: items per page */
    unsigned char *lpchString3;  /**< open: program directory; set-attribute: header length */
    unsigned char *lpchString4;  /**< open: common directory; set-attribute: item length */
    unsigned char *lpchString5;  /**< no command reads it */
    unsigned short wVkey;        /**< ACC_VKEY_ command code */
    unsigned short cchResult;    /**< length of lpchResult */
    unsigned char *lpchResult;   /**< the symbol chosen last */
    unsigned short cchDisplay;   /**< length of lpchDisplay, its final NUL not counted */
    unsigned char *lpchDisplay;  /**< strings, each with a NUL, and one more NUL after the last */
    unsigned short cchMessage;   /**< length of lpchMessage; 0: no message */
    unsigned char *lpchMessage;  /**< error text; emptied at the start of every command */
    unsigned short cchStatus;    /**< length of lpchStatus */
    unsigned char *lpchStatus;   /**< status line; passes through unchanged */
    unsigned short wCurrentList; /**< list box with focus, 1 to ACC_LISTBOX_MAX */
    ListBox tListBox[ACC_LISTBOX_MAX];
} Accdata;

#ifdef __cplusplus
}
#endif

#endif
