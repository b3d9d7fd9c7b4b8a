// fake_vm.cpp - see fake_vm.h.
#include "fake_vm.h"

#include <gtest/gtest.h>

namespace fake_vm {
namespace {

Vm *vm; // of the test that runs

std::set<std::string> names; // a field identifier is the address of its name

const std::string &name_of(jfieldID id) {
    return *reinterpret_cast<const std::string *>(id);
}

template <typename T>
T &as(jobject object) {
    return *reinterpret_cast<T *>(object);
}

template <typename Map>
auto value_in(const Map &map, const std::string &name) {
    const auto found = map.find(name);
    return found == map.end() ? typename Map::mapped_type{} : found->second;
}

jfieldID JNICALL get_field_id(JNIEnv *, jclass, const char *name, const char *signature) {
    if (static_cast<int>(vm->lookups.size()) == vm->lookups_before_failure) return nullptr;
    vm->lookups.push_back(std::string(name) + " " + signature);
    return reinterpret_cast<jfieldID>(const_cast<std::string *>(&*names.insert(name).first));
}

jobject JNICALL get_object_field(JNIEnv *, jobject object, jfieldID id) {
    ++vm->references;
    const std::string &name = name_of(id);
    if (Array *array = value_in(as<Object>(object).arrays, name)) return handle(array);
    return handle(value_in(as<Object>(object).objects, name));
}

jint JNICALL get_int_field(JNIEnv *, jobject object, jfieldID id) {
    return as<Object>(object).numbers.at(name_of(id));
}

void JNICALL set_int_field(JNIEnv *, jobject object, jfieldID id, jint value) {
    as<Object>(object).numbers.at(name_of(id)) = value;
}

jbyte *JNICALL get_elements(JNIEnv *, jbyteArray handle, jboolean *is_copy) {
    Array &array = as<Array>(handle);
    if (&array == vm->refused) return nullptr;
    *is_copy = vm->copies ? JNI_TRUE : JNI_FALSE;
    ++array.pins;
    ++vm->pinned;
    array.copy = array.bytes;
    return reinterpret_cast<jbyte *>(vm->copies ? array.copy.data() : array.bytes.data());
}

void JNICALL release_elements(JNIEnv *, jbyteArray handle, jbyte *elements, jint mode) {
    Array &array = as<Array>(handle);
    unsigned char *const out = vm->copies ? array.copy.data() : array.bytes.data();
    EXPECT_EQ(reinterpret_cast<unsigned char *>(elements), out) << "elements of another array";
    EXPECT_EQ(array.pins, 1);
    --array.pins;
    --vm->pinned;
    vm->release_modes.insert(mode);
    if (vm->copies && mode == 0) array.bytes = array.copy;
}

jint JNICALL ensure_capacity(JNIEnv *, jint capacity) {
    vm->capacities.push_back(capacity);
    return vm->capacity_result;
}

} // namespace

Vm::Vm(bool with_copies) : copies(with_copies) {
    vm = this;
    table.GetFieldID = get_field_id;
    table.GetObjectField = get_object_field;
    table.GetIntField = get_int_field;
    table.SetIntField = set_int_field;
    table.GetByteArrayElements = get_elements;
    table.ReleaseByteArrayElements = release_elements;
    table.EnsureLocalCapacity = ensure_capacity;
    env.functions = &table;
}

} // namespace fake_vm
