// Filling a list box: items one after another, each with its number header, its text,
// a NUL and (in every header mode but 0) one more NUL.
//
// Invariant: cchLBListLen never passes 65535. An item that would carry it further is
// refused, and so is every one after it, so that a list holds a prefix of what it
// should show.
#ifndef ACCSYM_RECORD_ITEM_LIST_H
#define ACCSYM_RECORD_ITEM_LIST_H

#include "accsym.h"

namespace acc {

/** Makes a list hold nothing. The cursor stays. */
void empty_list(ListBox &list);

/** Numbers of a run of items: 1, 2, ... and, unless the cycle is 0, 1 again after it. */
class ItemNumbers {
  public:
    explicit ItemNumbers(unsigned short cycle) : cycle_(cycle) {}
    unsigned short next() {
        ++number_;
        const unsigned short result = number_;
        if (cycle_ != 0) number_ = static_cast<unsigned short>(number_ % cycle_);
        return result;
    }

  private:
    unsigned short cycle_;
    unsigned short number_ = 0;
};

/**
 * Appends one item.
 *
 * @param header_mode  header setting of the fill (see ListBox)
 * @param attribute    its LBINFO_ byte
 * @return             false, and nothing written, when the item does not fit
 */
bool append_item(ListBox &list, unsigned short header_mode, unsigned short number,
                 const unsigned char *text, unsigned char attribute);

/**
 * Appends one string to lpchDisplay, which must be ended with one more NUL afterwards.
 * @return false, and nothing written, when it would carry cchDisplay past 65535
 */
bool append_display(Accdata *record, const unsigned char *text);

/** Ends lpchDisplay and marks it in both data-status fields. */
void end_display(Accdata *record);

} // namespace acc

#endif
