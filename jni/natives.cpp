// natives.cpp - the native methods of the host's classes ZikSymAccdata, ZikSymListBox,
// ZikSym and ZikNative, which document them for callers.
#include "accsym.h"
#include "common/acccom.h"
#include "jni/host_fields.h"
#include "jni/jniAccdata.h"
#include "jni/jniListBox.h"

namespace {

/** Arrays and list boxes are asked for twice, to build the record and to write it back. */
constexpr jint local_references = 2 * (acc::arrays_of_record + ACC_LISTBOX_MAX);

/** Room for the references of one call. @return false when the virtual machine has none */
bool reserve_references(JNIEnv *env) {
    return !env->functions->EnsureLocalCapacity || env->EnsureLocalCapacity(local_references) == 0;
}

using Conversion = int (*)(unsigned char *destination, unsigned short destination_size,
                           const unsigned char *source, unsigned short source_bytes);

/** Converts from array to array; 0 when the elements of one cannot be had. */
jint convert(Conversion conversion, JNIEnv *env, jbyteArray source, jint length,
             jbyteArray destination) {
    const auto bytes = static_cast<unsigned short>(length);
    const acc::PinnedArray from(env, source);
    if (!from) return 0;
    acc::PinnedArray to(env, destination);
    if (!to) return 0;
    conversion(to.bytes(), bytes, from.bytes(), bytes);
    to.commit();
    return 1;
}

} // namespace

extern "C" {

JNIEXPORT void JNICALL Java_jp_co_korm_wospen_ZikSymAccdata_initFIDs(JNIEnv *env,
                                                                     jclass accdata_class) {
    initAccdataFieldIDs(env, accdata_class);
}

JNIEXPORT void JNICALL Java_jp_co_korm_wospen_ZikSymListBox_initFIDs(JNIEnv *env,
                                                                     jclass list_box_class) {
    initListBoxFieldIDs(env, list_box_class);
}

JNIEXPORT jint JNICALL Java_jp_co_korm_wospen_ZikSym_AccSym(JNIEnv *env, jobject object) {
    if (!reserve_references(env)) return 0;
    Accdata record;
    if (JavaAllocStruct(env, object, &record) != 1) return 0;
    const int result = AccSym(&record);
    JavaFreeStruct(env, object, &record);
    return result;
}

JNIEXPORT jint JNICALL Java_jp_co_korm_wospen_ZikNative_AccUnicodeToSjis(JNIEnv *env, jobject,
                                                                         jbyteArray source,
                                                                         jint length,
                                                                         jbyteArray destination) {
    return convert(CM_UnicodeToSjis, env, source, length, destination);
}

JNIEXPORT jint JNICALL Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode(JNIEnv *env, jobject,
                                                                         jbyteArray source,
                                                                         jint length,
                                                                         jbyteArray destination) {
    return convert(CM_SjisToUnicode, env, source, length, destination);
}

} // extern "C"
