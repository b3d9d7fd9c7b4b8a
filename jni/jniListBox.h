/*
 * jniListBox.h - marshaling of a ListBox from and to an object of the host's class
 * jp.co.korm.wospen.ZikSymListBox.
 *
 * A Get function takes from the host object into the list box, a Set function writes the
 * list box back; see jniAccdata.h for what holds for all of them. The functions of single
 * fields exist in pairs for every field of ListBox:
 *
 *     int jni_Get<Field>_from_ListBox(ListBox *, JNIEnv *, jobject);
 *     void jni_Set<Field>_in_ListBox(ListBox *, JNIEnv *, jobject);
 */
#ifndef ACCSYM_JNI_JNILISTBOX_H
#define ACCSYM_JNI_JNILISTBOX_H

#include <jni.h>

#include "accdata.h"

/** The fields of ListBox in the order in which they are copied: NUMBER or BYTES (name, Name). */
#define ACC_LISTBOX_FIELDS(NUMBER, BYTES)          \
    BYTES(lpchLBTitle, LpchLBTitle)                \
    BYTES(lpchLBLevel, LpchLBLevel)                \
    NUMBER(cchLBListLen, CchLBListLen)             \
    BYTES(lpchLBList, LpchLBList)                  \
    BYTES(lpchLBListInfo, LpchLBListInfo)          \
    NUMBER(cchLBItemPageFirst, CchLBItemPageFirst) \
    NUMBER(cchLBItemTotal, CchLBItemTotal)         \
    NUMBER(cchLBItemNum, CchLBItemNum)             \
    NUMBER(cchLBItemNumMax, CchLBItemNumMax)       \
    NUMBER(cchLBItemLenMax, CchLBItemLenMax)       \
    NUMBER(cchLBItemHead, CchLBItemHead)           \
    NUMBER(cchLBItemInfoSize, CchLBItemInfoSize)   \
    BYTES(lpchLBItemInfo, LpchLBItemInfo)

#pragma GCC visibility push(default)
extern "C" {

/**
 * Caches the identifiers of the fields of the class; ends at the first that it lacks and
 * leaves the virtual machine's error pending.
 */
void initListBoxFieldIDs(JNIEnv *env, jclass list_box_class);

/**
 * Every field of the object into the list box.
 * @return  1; 0 when an array is null or cannot be had, or initListBoxFieldIDs has not
 *          succeeded: then the list box is zero and nothing stays pinned
 */
int jni_GetAll_from_ListBox(ListBox *list_box, JNIEnv *env, jobject object);

/** Every field of the list box into the object; its arrays are the host's again. */
void jni_SetAll_in_ListBox(ListBox *list_box, JNIEnv *env, jobject object);

#define ACC_DECLARE(field, Field)                                                      \
    int jni_Get##Field##_from_ListBox(ListBox *list_box, JNIEnv *env, jobject object); \
    void jni_Set##Field##_in_ListBox(ListBox *list_box, JNIEnv *env, jobject object);
ACC_LISTBOX_FIELDS(ACC_DECLARE, ACC_DECLARE)
#undef ACC_DECLARE

} // extern "C"
#pragma GCC visibility pop

namespace acc {

class PinnedArrays;

/** jni_GetAll_from_ListBox for a part of a larger record: the arrays join taken. */
bool get_list_box(ListBox *list_box, JNIEnv *env, jobject object, PinnedArrays &taken);

} // namespace acc

#endif
