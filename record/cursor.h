// The cursor of a list box and the items it points at.
//
//  P cchLBItemPageFirst   1-based number of the first item of the page
//  N cchLBItemNum         place on the page, 1-based; 0: no current item
//  M cchLBItemNumMax      items per page; 0: one endless page
//  T cchLBItemTotal       items in the list
//
// The current item's number is P + N - 1.
#ifndef ACCSYM_RECORD_CURSOR_H
#define ACCSYM_RECORD_CURSOR_H

#include "accsym.h"

namespace acc {

/** The list with focus; null when wCurrentList is not 1 to ACC_LISTBOX_MAX. */
ListBox *current_list(Accdata *record);

/** 0-based index of a list's current item, or -1 when there is none in the list. */
int current_item(const ListBox &list);

/**
 * The number that an item's header shows.
 *
 * Titles and symbols are counted apart, and each count starts again after
 * cchLBItemNumMax items unless that is 0.
 */
unsigned short item_number(const ListBox &list, int index);

/**
 * Text of an item, behind its header; index must be in the list. Of an item that was made
 * with another header setting than the list now has, it may be more or less than the text,
 * yet never what stands behind the item.
 */
unsigned char *item_text(const ListBox &list, int index);

/** Text of the current item when that is a symbol, two bytes; else null. */
const unsigned char *current_symbol(const ListBox &list);

/** Each moves the cursor and says whether there was anywhere to move to. */
bool move_to_next_item(ListBox &list);
bool move_to_previous_item(ListBox &list);
bool move_to_next_page(ListBox &list);
bool move_to_previous_page(ListBox &list);

} // namespace acc

#endif
