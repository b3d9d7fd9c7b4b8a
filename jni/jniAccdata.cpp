// jniAccdata.cpp - see jniAccdata.h.
#include "jni/jniAccdata.h"

#include <algorithm>
#include <cstddef>

#include "jni/host_fields.h"
#include "jni/jniListBox.h"

namespace {

#define ACC_IDENTIFIER(field, Field) jfieldID Accdata_##Field##_FID;
ACC_ACCDATA_FIELDS(ACC_IDENTIFIER, ACC_IDENTIFIER)
#undef ACC_IDENTIFIER

jfieldID Accdata_ListBox_FID; // looked up, never read: the list boxes have fields of their own
jfieldID Accdata_ListBox1_FID;
jfieldID Accdata_ListBox2_FID;
jfieldID Accdata_ListBox3_FID;
jfieldID Accdata_ListBox4_FID;
jfieldID Accdata_ListBox5_FID;
jfieldID Accdata_ListBox6_FID;
jfieldID Accdata_ListBox7_FID;
jfieldID Accdata_ListBox8_FID;
jfieldID Accdata_ListBox9_FID;
jfieldID Accdata_ListBox10_FID;

#define ACC_INDEX(field, Field) at_##field,
enum Index : unsigned { ACC_ACCDATA_FIELDS(ACC_INDEX, ACC_INDEX) field_count };
#undef ACC_INDEX

#define ACC_NUMBER(field, Field) {#field, &Accdata_##Field##_FID, offsetof(Accdata, field), false},
#define ACC_BYTES(field, Field) {#field, &Accdata_##Field##_FID, offsetof(Accdata, field), true},
constexpr acc::HostField fields[] = {ACC_ACCDATA_FIELDS(ACC_NUMBER, ACC_BYTES)};
#undef ACC_NUMBER
#undef ACC_BYTES

static_assert(field_count == 17);
static_assert(std::ranges::count_if(fields, &acc::HostField::is_bytes) == acc::arrays_of_accdata);

constexpr struct {
    const char *name;
    jfieldID *id;
} list_boxes[ACC_LISTBOX_MAX] = {
    {"tListBox1", &Accdata_ListBox1_FID}, {"tListBox2", &Accdata_ListBox2_FID},
    {"tListBox3", &Accdata_ListBox3_FID}, {"tListBox4", &Accdata_ListBox4_FID},
    {"tListBox5", &Accdata_ListBox5_FID}, {"tListBox6", &Accdata_ListBox6_FID},
    {"tListBox7", &Accdata_ListBox7_FID}, {"tListBox8", &Accdata_ListBox8_FID},
    {"tListBox9", &Accdata_ListBox9_FID}, {"tListBox10", &Accdata_ListBox10_FID},
};

constexpr const char *list_box_signature = "Ljp/co/korm/wospen/ZikSymListBox;";
constexpr const char *list_box_array_signature = "[Ljp/co/korm/wospen/ZikSymListBox;";

bool get_list_box(Accdata *record, JNIEnv *env, jobject object, jfieldID id, int index,
                  acc::PinnedArrays &taken) {
    const jobject list_box = acc::object_in(env, object, id);
    return list_box && acc::get_list_box(&record->tListBox[index], env, list_box, taken);
}

bool get_list_boxes(Accdata *record, JNIEnv *env, jobject object, acc::PinnedArrays &taken) {
    for (int i = 0; i < ACC_LISTBOX_MAX; ++i) {
        if (!get_list_box(record, env, object, *list_boxes[i].id, i, taken)) return false;
    }
    return true;
}

} // namespace

void initAccdataFieldIDs(JNIEnv *env, jclass accdata_class) {
    if (!acc::look_up(env, accdata_class, fields)) return;
    if (!acc::look_up(env, accdata_class, "tListBox", list_box_array_signature,
                      &Accdata_ListBox_FID)) {
        return;
    }
    for (const auto &list_box : list_boxes) {
        if (!acc::look_up(env, accdata_class, list_box.name, list_box_signature, list_box.id)) {
            return;
        }
    }
}

int JavaAllocStruct(JNIEnv *env, jobject object, Accdata *record) {
    return jni_GetAll_from_Accdata(record, env, object);
}

void JavaFreeStruct(JNIEnv *env, jobject object, Accdata *record) {
    jni_SetAll_in_Accdata(record, env, object);
}

int jni_GetAll_from_Accdata(Accdata *record, JNIEnv *env, jobject object) {
    acc::PinnedArrays taken;
    if (!acc::get_fields(fields, record, env, object, taken) ||
        !get_list_boxes(record, env, object, taken)) {
        *record = Accdata{};
        return 0;
    }
    taken.keep();
    return 1;
}

void jni_SetAll_in_Accdata(Accdata *record, JNIEnv *env, jobject object) {
    acc::set_fields(fields, record, env, object);
    jni_SetListBox_in_Accdata(record, env, object);
}

int jni_GetListBox_from_Accdata(Accdata *record, JNIEnv *env, jobject object) {
    acc::PinnedArrays taken;
    if (!get_list_boxes(record, env, object, taken)) {
        std::ranges::fill(record->tListBox, ListBox{});
        return 0;
    }
    taken.keep();
    return 1;
}

void jni_SetListBox_in_Accdata(Accdata *record, JNIEnv *env, jobject object) {
    for (int i = 0; i < ACC_LISTBOX_MAX; ++i) {
        jni_SetListBox_in_Accdata_Index(record, env, object, *list_boxes[i].id, i);
    }
}

int jni_GetListBox_from_Accdata_Index(Accdata *record, JNIEnv *env, jobject object, jfieldID id,
                                      int index) {
    acc::PinnedArrays taken;
    if (!get_list_box(record, env, object, id, index, taken)) {
        record->tListBox[index] = ListBox{};
        return 0;
    }
    taken.keep();
    return 1;
}

void jni_SetListBox_in_Accdata_Index(Accdata *record, JNIEnv *env, jobject object, jfieldID id,
                                     int index) {
    const jobject list_box = acc::object_in(env, object, id);
    if (list_box) jni_SetAll_in_ListBox(&record->tListBox[index], env, list_box);
}

#define ACC_DEFINE(field, Field)                                                      \
    int jni_Get##Field##_from_Accdata(Accdata *record, JNIEnv *env, jobject object) { \
        return acc::get_single(fields[at_##field], record, env, object);              \
    }                                                                                 \
    void jni_Set##Field##_in_Accdata(Accdata *record, JNIEnv *env, jobject object) {  \
        acc::set_field(fields[at_##field], record, env, object);                      \
    }
ACC_ACCDATA_FIELDS(ACC_DEFINE, ACC_DEFINE)
#undef ACC_DEFINE
