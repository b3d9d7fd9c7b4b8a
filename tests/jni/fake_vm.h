// fake_vm.h - a function table of the Java Native Interface with nothing behind it but
// the few operations that the bridge uses, made to count and to fail.
#ifndef ACCSYM_TESTS_JNI_FAKE_VM_H
#define ACCSYM_TESTS_JNI_FAKE_VM_H

#include <jni.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace fake_vm {

using Bytes = std::vector<unsigned char>;

struct Array {
    Bytes bytes;
    Bytes copy; /**< what the bridge works on while the array is out, in copying mode */
    int pins = 0;
};

struct Object {
    std::map<std::string, jint> numbers;
    std::map<std::string, Array *> arrays;
    std::map<std::string, Object *> objects;
};

/** What the table does and what it saw; one at a time. */
struct Vm {
    explicit Vm(bool copies);

    bool copies;                    /**< arrays are copied out, not pinned */
    const Array *refused = nullptr; /**< its elements cannot be had */
    int lookups_before_failure = -1;
    jint capacity_result = JNI_OK;

    std::vector<std::string> lookups; /**< "name signature", in order */
    std::vector<jint> capacities;
    std::set<jint> release_modes;
    int references = 0; /**< local references handed out */
    int pinned = 0;     /**< arrays out */

    JNINativeInterface_ table{};
    JNIEnv env{};
};

inline jobject handle(void *object) {
    return static_cast<jobject>(object);
}

} // namespace fake_vm

#endif
