// bridge_pin_only.cpp - the native that bench/BridgeBench.java compares a command with: it
// gets and releases the same arrays and does nothing else.
#include <jni.h>

#include <array>

extern "C" JNIEXPORT void JNICALL Java_BridgeBench_pinOnly(JNIEnv *env, jclass,
                                                           jobjectArray arrays) {
    constexpr jsize count = 59;
    std::array<jbyteArray, count> array{};
    std::array<jbyte *, count> elements{};
    if (env->GetArrayLength(arrays) != count || env->EnsureLocalCapacity(count) != 0) return;
    for (jsize i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        array[at] = static_cast<jbyteArray>(env->GetObjectArrayElement(arrays, i));
        elements[at] = env->GetByteArrayElements(array[at], nullptr);
    }
    for (std::size_t i = 0; i < count; ++i) {
        env->ReleaseByteArrayElements(array[i], elements[i], 0);
    }
}
