/*
 * host_fields.h - how the fields of a host object reach a record of the library and go
 * back, driven by one table per class.
 *
 * Invariants
 *  1. An array taken from the virtual machine is in a PinnedArray until the record that
 *     points at its elements is complete, so a record is complete or nothing is pinned.
 *  2. Only these operations of the function table are called: GetFieldID, GetObjectField,
 *     GetIntField, SetIntField, GetByteArrayElements, ReleaseByteArrayElements and, where
 *     the table has it, EnsureLocalCapacity.
 */
#ifndef ACCSYM_JNI_HOST_FIELDS_H
#define ACCSYM_JNI_HOST_FIELDS_H

#include <jni.h>

#include <array>
#include <cstddef>
#include <span>
#include <utility>

#include "accdata.h"

namespace acc {

inline constexpr const char *number_signature = "I";
inline constexpr const char *bytes_signature = "[B";

/** A field of a host class and its place in the library's record. */
struct HostField {
    const char *name;
    jfieldID *id; /**< null until the class's initFIDs has run */
    std::size_t offset;
    bool is_bytes; /**< a byte array; else an int */

    const char *signature() const { return is_bytes ? bytes_signature : number_signature; }
};

/** Elements of a host's byte array; given back without copying unless told otherwise. */
class PinnedArray {
  public:
    PinnedArray() = default;

    /** Takes the elements of array, which may be null; empty when they cannot be had. */
    PinnedArray(JNIEnv *env, jbyteArray array) : env_(env), array_(array) {
        jboolean is_copy = JNI_FALSE;
        if (array) elements_ = env->GetByteArrayElements(array, &is_copy);
    }
    PinnedArray(PinnedArray &&other) noexcept
        : env_(other.env_), array_(other.array_), elements_(other.release()) {}
    PinnedArray &operator=(PinnedArray &&other) noexcept {
        std::swap(env_, other.env_);
        std::swap(array_, other.array_);
        std::swap(elements_, other.elements_);
        return *this;
    }
    ~PinnedArray() {
        if (elements_) env_->ReleaseByteArrayElements(array_, elements_, JNI_ABORT);
    }

    explicit operator bool() const { return elements_ != nullptr; }
    unsigned char *bytes() const { return reinterpret_cast<unsigned char *>(elements_); }

    /** Gives up ownership: somebody else returns the elements. */
    jbyte *release() { return std::exchange(elements_, nullptr); }

    /** Returns the elements, what was written to them included. */
    void commit() {
        if (elements_) env_->ReleaseByteArrayElements(array_, release(), 0);
    }

  private:
    JNIEnv *env_ = nullptr;
    jbyteArray array_ = nullptr;
    jbyte *elements_ = nullptr;
};

inline constexpr std::size_t arrays_of_accdata = 9;
inline constexpr std::size_t arrays_of_list_box = 5;
inline constexpr std::size_t arrays_of_record =
    arrays_of_accdata + ACC_LISTBOX_MAX * arrays_of_list_box;

/** The arrays taken for one record so far; all go back unless the record is complete. */
class PinnedArrays {
  public:
    void add(PinnedArray array) { arrays_[count_++] = std::move(array); }

    /** The record is complete: its pointers own the elements from here on. */
    void keep() {
        for (PinnedArray &array : arrays_) array.release();
    }

  private:
    std::array<PinnedArray, arrays_of_record> arrays_;
    std::size_t count_ = 0;
};

/**
 * Looks up the identifier of a field and stores it in *id.
 * @return  false when the class has no such field; the virtual machine's error is pending
 */
bool look_up(JNIEnv *env, jclass host_class, const char *name, const char *signature, jfieldID *id);

/** Looks up every field of a table, in its order, up to the first that is missing. */
bool look_up(JNIEnv *env, jclass host_class, std::span<const HostField> fields);

/** The object that a field holds; null when it holds none or the identifier is not known. */
jobject object_in(JNIEnv *env, jobject object, jfieldID id);

/**
 * Copies one field of the host object into the record: of an int the low 16 bits, of a
 * byte array the address of its elements, which join taken.
 * @return  false when the identifier is not known, the array is null or cannot be had
 */
bool get_field(const HostField &field, void *record, JNIEnv *env, jobject object,
               PinnedArrays &taken);

/** get_field for each field of a table, up to the first that fails. */
bool get_fields(std::span<const HostField> fields, void *record, JNIEnv *env, jobject object,
                PinnedArrays &taken);

/** get_field for one field alone; the record owns the elements. @return 1, or 0 on failure */
int get_single(const HostField &field, void *record, JNIEnv *env, jobject object);

/**
 * Copies one field of the record back: an int zero-extended; a byte array by returning
 * its elements with what was written to them. A null array or pointer is passed over.
 */
void set_field(const HostField &field, const void *record, JNIEnv *env, jobject object);

/** set_field for each field of a table. */
void set_fields(std::span<const HostField> fields, const void *record, JNIEnv *env, jobject object);

} // namespace acc

#endif
