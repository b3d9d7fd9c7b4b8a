// jniListBox.cpp - see jniListBox.h.
#include "jni/jniListBox.h"

#include <algorithm>
#include <cstddef>

#include "jni/host_fields.h"

namespace {

#define ACC_IDENTIFIER(field, Field) jfieldID ListBox_##Field##_FID;
ACC_LISTBOX_FIELDS(ACC_IDENTIFIER, ACC_IDENTIFIER)
#undef ACC_IDENTIFIER

#define ACC_INDEX(field, Field) at_##field,
enum Index : unsigned { ACC_LISTBOX_FIELDS(ACC_INDEX, ACC_INDEX) field_count };
#undef ACC_INDEX

#define ACC_NUMBER(field, Field) {#field, &ListBox_##Field##_FID, offsetof(ListBox, field), false},
#define ACC_BYTES(field, Field) {#field, &ListBox_##Field##_FID, offsetof(ListBox, field), true},
constexpr acc::HostField fields[] = {ACC_LISTBOX_FIELDS(ACC_NUMBER, ACC_BYTES)};
#undef ACC_NUMBER
#undef ACC_BYTES

static_assert(field_count == 13);
static_assert(std::ranges::count_if(fields, &acc::HostField::is_bytes) == acc::arrays_of_list_box);

} // namespace

bool acc::get_list_box(ListBox *list_box, JNIEnv *env, jobject object, PinnedArrays &taken) {
    return get_fields(fields, list_box, env, object, taken);
}

void initListBoxFieldIDs(JNIEnv *env, jclass list_box_class) {
    acc::look_up(env, list_box_class, fields);
}

int jni_GetAll_from_ListBox(ListBox *list_box, JNIEnv *env, jobject object) {
    acc::PinnedArrays taken;
    if (!acc::get_list_box(list_box, env, object, taken)) {
        *list_box = ListBox{};
        return 0;
    }
    taken.keep();
    return 1;
}

void jni_SetAll_in_ListBox(ListBox *list_box, JNIEnv *env, jobject object) {
    acc::set_fields(fields, list_box, env, object);
}

#define ACC_DEFINE(field, Field)                                                        \
    int jni_Get##Field##_from_ListBox(ListBox *list_box, JNIEnv *env, jobject object) { \
        return acc::get_single(fields[at_##field], list_box, env, object);              \
    }                                                                                   \
    void jni_Set##Field##_in_ListBox(ListBox *list_box, JNIEnv *env, jobject object) {  \
        acc::set_field(fields[at_##field], list_box, env, object);                      \
    }
ACC_LISTBOX_FIELDS(ACC_DEFINE, ACC_DEFINE)
#undef ACC_DEFINE
