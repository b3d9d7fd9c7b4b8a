// fake_vm.h - a function table of the Java Native Interface with nothing behind it but
// the few operations that the bridge uses, made to count and to fail.
#ifndef ACCSYM_TESTS_JNI_FAKE_VM_H
#define ACCSYM_TESTS_JNI_FAKE_VM_H

#include <gtest/gtest.h>
#include <jni.h>

#include <map>
#include <set>

using Bytes = std::vector<unsigned char>;

struct Array {
    Bytes bytes;
    Bytes copy; /**< what the bridge works on while the array is out */
};

struct Object {
    std::map<std::string, jint> numbers;
    std::map<std::string, Array *> arrays;
    std::map<std::string, Object *> objects;
};

inline jobject handle(void *object) {
    return static_cast<jobject>(object);
}

/** What the table does and what it saw; one at a time. */
struct FakeVm {
    const Array *refused = nullptr; /**< its elements cannot be had */
    std::string missing;            /**< field that its class lacks, as in lookups */
    jint capacity_result = JNI_OK;

    std::vector<std::string> lookups; /**< "name signature", in order */
    std::vector<std::string> asked;   /**< names of fields read or written */
    bool changed = false;             /**< whether the bridge wrote to an object */
    std::vector<jint> capacities;
    std::set<Array *> out; /**< arrays whose elements the bridge has */
    int references = 0;    /**< local references handed out */

    JNINativeInterface_ table{};
    JNIEnv env{};

    FakeVm() {
        vm = this;
        table.GetFieldID = [](JNIEnv *, jclass, const char *name, const char *signature) -> jfieldID {
            const std::string field = std::string(name) + " " + signature;
            if (field == vm->missing) return nullptr;
            vm->lookups.push_back(field);
            return reinterpret_cast<jfieldID>(const_cast<std::string *>(&*names.insert(name).first));
        };
        table.GetObjectField = [](JNIEnv *, jobject object, jfieldID id) {
            ++vm->references;
            const std::string &name = name_of(id);
            return name[0] == 't' ? handle(object_of(object).objects.at(name)) : handle(object_of(object).arrays.at(name));
        };
        table.GetIntField = [](JNIEnv *, jobject object, jfieldID id) { return object_of(object).numbers.at(name_of(id)); };
        table.SetIntField = [](JNIEnv *, jobject object, jfieldID id, jint value) {
            vm->changed = true;
            object_of(object).numbers.at(name_of(id)) = value;
        };
        table.GetByteArrayElements = [](JNIEnv *, jbyteArray array, jboolean *) -> jbyte * {
            Array *const taken = reinterpret_cast<Array *>(array);
            if (taken == vm->refused) return nullptr;
            EXPECT_TRUE(vm->out.insert(taken).second) << "elements taken twice";
            taken->copy = taken->bytes;
            return reinterpret_cast<jbyte *>(taken->copy.data());
        };
        table.ReleaseByteArrayElements = [](JNIEnv *, jbyteArray array, jbyte *elements, jint mode) {
            Array *const returned = reinterpret_cast<Array *>(array);
            EXPECT_EQ(vm->out.erase(returned), 1U) << "elements returned twice";
            EXPECT_EQ(elements, reinterpret_cast<jbyte *>(returned->copy.data())) << "elements of another array";
            // Other machines hand out the array itself, and then nothing is undone.
            EXPECT_TRUE(mode == 0 || (mode == JNI_ABORT && returned->copy == returned->bytes)) << "mode " << mode;
            if (mode != 0) return;
            vm->changed = true;
            returned->bytes = returned->copy;
        };
        table.EnsureLocalCapacity = [](JNIEnv *, jint capacity) {
            vm->capacities.push_back(capacity);
            return vm->capacity_result;
        };
        env.functions = &table;
    }

  private:
    static inline FakeVm *vm;                  // of the test that runs
    static inline std::set<std::string> names; // a field identifier is the address of its name

    static const std::string &name_of(jfieldID id) {
        const std::string &name = *reinterpret_cast<const std::string *>(id);
        vm->asked.push_back(name);
        return name;
    }
    static Object &object_of(jobject object) { return *reinterpret_cast<Object *>(object); }
};

#endif
