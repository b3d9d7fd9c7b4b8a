/*
 * jniAccdata.h - marshaling of an Accdata from and to an object of the host's class
 * jp.co.korm.wospen.ZikSymAccdata.
 *
 * Conventions
 *  1. A Get function takes from the host object into the record: of an int the low 16
 *     bits, of a byte array the address of its elements, pinned or copied by the virtual
 *     machine. A Set function writes the record back: an int zero-extended, an array by
 *     releasing its elements with copy-back. Each Get wants its Set.
 *  2. The Set functions ask the object for its arrays and list boxes again, so nobody may
 *     replace one between Get and Set.
 *  3. The identifiers must have been cached by both init functions; without them a Get
 *     fails and a Set does nothing.
 *  4. Each array costs one local reference at Get and one at Set, each list box too: a
 *     whole record 138. Who calls these functions sees to the room.
 *  5. The functions of single fields exist in pairs for fields 1 to 17 of Accdata:
 *
 *         int jni_Get<Field>_from_Accdata(Accdata *, JNIEnv *, jobject);
 *         void jni_Set<Field>_in_Accdata(Accdata *, JNIEnv *, jobject);
 *
 *     Get answers 1, or 0 when an array is null or cannot be had: the pointer is null then.
 */
#ifndef ACCSYM_JNI_JNIACCDATA_H
#define ACCSYM_JNI_JNIACCDATA_H

#include <jni.h>

#include "accdata.h"

/** The fields of Accdata but for its list boxes, in the order in which they are copied. */
#define ACC_ACCDATA_FIELDS(NUMBER, BYTES) \
    NUMBER(wDataStatus, WDataStatus)      \
    NUMBER(wDataUpdate, WDataUpdate)      \
    BYTES(lpchString1, LpchString1)       \
    BYTES(lpchString2, LpchString2)       \
    BYTES(lpchString3, LpchString3)       \
    BYTES(lpchString4, LpchString4)       \
    BYTES(lpchString5, LpchString5)       \
    NUMBER(wVkey, WVkey)                  \
    NUMBER(cchResult, CchResult)          \
    BYTES(lpchResult, LpchResult)         \
    NUMBER(cchDisplay, CchDisplay)        \
    BYTES(lpchDisplay, LpchDisplay)       \
    NUMBER(cchMessage, CchMessage)        \
    BYTES(lpchMessage, LpchMessage)       \
    NUMBER(cchStatus, CchStatus)          \
    BYTES(lpchStatus, LpchStatus)         \
    NUMBER(wCurrentList, WCurrentList)

#pragma GCC visibility push(default)
extern "C" {

/**
 * Caches the identifiers of the fields of the class; ends at the first that it lacks and
 * leaves the virtual machine's error pending.
 */
void initAccdataFieldIDs(JNIEnv *env, jclass accdata_class);

/**
 * Builds the record of a command from the host object.
 * @return  1; 0 when an array or a list box is null or cannot be had, or an identifier is
 *          not cached: then the record is zero and nothing stays pinned
 */
int JavaAllocStruct(JNIEnv *env, jobject object, Accdata *record);

/** Writes the record back into the host object and ends all pinning. */
void JavaFreeStruct(JNIEnv *env, jobject object, Accdata *record);

/** Every field of the object into the record, the list boxes too; results as JavaAllocStruct. */
int jni_GetAll_from_Accdata(Accdata *record, JNIEnv *env, jobject object);

/** Every field of the record into the object, the list boxes too. */
void jni_SetAll_in_Accdata(Accdata *record, JNIEnv *env, jobject object);

/**
 * The ten list boxes alone, from the fields tListBox1 to tListBox10.
 * @return  1; 0 on failure: then all ten are zero and nothing of theirs stays pinned
 */
int jni_GetListBox_from_Accdata(Accdata *record, JNIEnv *env, jobject object);

/** The ten list boxes back. */
void jni_SetListBox_in_Accdata(Accdata *record, JNIEnv *env, jobject object);

/**
 * One list box from the object that a field holds.
 * @param id     identifier of the field
 * @param index  0 to 9
 * @return       1; 0 on failure: then the list box is zero and nothing of it stays pinned
 */
int jni_GetListBox_from_Accdata_Index(Accdata *record, JNIEnv *env, jobject object, jfieldID id,
                                      int index);

/** One list box back. A null object is passed over. */
void jni_SetListBox_in_Accdata_Index(Accdata *record, JNIEnv *env, jobject object, jfieldID id,
                                     int index);

#define ACC_DECLARE(field, Field)                                                    \
    int jni_Get##Field##_from_Accdata(Accdata *record, JNIEnv *env, jobject object); \
    void jni_Set##Field##_in_Accdata(Accdata *record, JNIEnv *env, jobject object);
ACC_ACCDATA_FIELDS(ACC_DECLARE, ACC_DECLARE)
#undef ACC_DECLARE

} // extern "C"
#pragma GCC visibility pop

#endif
