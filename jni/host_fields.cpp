// host_fields.cpp - see host_fields.h.
#include "jni/host_fields.h"

#include <algorithm>

namespace acc {
namespace {

template <typename T>
T &at(void *record, const HostField &field) {
    return *reinterpret_cast<T *>(static_cast<unsigned char *>(record) + field.offset);
}

template <typename T>
const T &at(const void *record, const HostField &field) {
    return *reinterpret_cast<const T *>(static_cast<const unsigned char *>(record) + field.offset);
}

} // namespace

bool look_up(JNIEnv *env, jclass host_class, const char *name, const char *signature,
             jfieldID *id) {
    *id = env->GetFieldID(host_class, name, signature);
    return *id != nullptr;
}

bool look_up(JNIEnv *env, jclass host_class, std::span<const HostField> fields) {
    return std::all_of(fields.begin(), fields.end(), [&](const HostField &field) {
        return look_up(env, host_class, field.name, field.signature(), field.id);
    });
}

jobject object_in(JNIEnv *env, jobject object, jfieldID id) {
    return id ? env->GetObjectField(object, id) : nullptr;
}

bool get_field(const HostField &field, void *record, JNIEnv *env, jobject object,
               PinnedArrays &taken) {
    if (!*field.id) return false;
    if (!field.is_bytes) {
        at<unsigned short>(record, field) =
            static_cast<unsigned short>(env->GetIntField(object, *field.id));
        return true;
    }
    PinnedArray array(env, static_cast<jbyteArray>(env->GetObjectField(object, *field.id)));
    at<unsigned char *>(record, field) = array.bytes();
    if (!array) return false;
    taken.add(std::move(array));
    return true;
}

bool get_fields(std::span<const HostField> fields, void *record, JNIEnv *env, jobject object,
                PinnedArrays &taken) {
    return std::all_of(fields.begin(), fields.end(), [&](const HostField &field) {
        return get_field(field, record, env, object, taken);
    });
}

int get_single(const HostField &field, void *record, JNIEnv *env, jobject object) {
    PinnedArrays taken;
    const bool got = get_field(field, record, env, object, taken);
    taken.keep();
    return got ? 1 : 0;
}

void set_field(const HostField &field, const void *record, JNIEnv *env, jobject object) {
    if (!*field.id) return;
    if (!field.is_bytes) {
        env->SetIntField(object, *field.id, at<unsigned short>(record, field));
        return;
    }
    auto *const elements = reinterpret_cast<jbyte *>(at<unsigned char *const>(record, field));
    auto *const array = static_cast<jbyteArray>(env->GetObjectField(object, *field.id));
    if (array && elements) env->ReleaseByteArrayElements(array, elements, 0);
}

void set_fields(std::span<const HostField> fields, const void *record, JNIEnv *env,
                jobject object) {
    for (const HostField &field : fields) set_field(field, record, env, object);
}

} // namespace acc
