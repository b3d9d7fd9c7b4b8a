// The bridge: fields go where they belong, and whatever the virtual machine refuses, no
// array stays pinned and no command runs.
#include <gtest/gtest.h>

#include <deque>

#include "accsym.h"
#include "fake_vm.h"
#include "jni/jniAccdata.h"
#include "jni/jniListBox.h"

extern "C" {
void JNICALL Java_jp_co_korm_wospen_ZikSymAccdata_initFIDs(JNIEnv *, jclass);
void JNICALL Java_jp_co_korm_wospen_ZikSymListBox_initFIDs(JNIEnv *, jclass);
jint JNICALL Java_jp_co_korm_wospen_ZikSym_AccSym(JNIEnv *, jobject);
jint JNICALL Java_jp_co_korm_wospen_ZikNative_AccUnicodeToSjis(JNIEnv *, jobject, jbyteArray, jint, jbyteArray);
jint JNICALL Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode(JNIEnv *, jobject, jbyteArray, jint, jbyteArray);
}

namespace {

using fake_vm::Array;
using fake_vm::Bytes;
using fake_vm::handle;
using fake_vm::Object;
using fake_vm::Vm;

#define TEXT(field, Field) #field " [B",
#define NUMBER(field, Field) #field " I",
const std::vector<std::string> list_box_fields{ACC_LISTBOX_FIELDS(NUMBER, TEXT)};
const std::vector<std::string> accdata_fields{ACC_ACCDATA_FIELDS(NUMBER, TEXT)};
#undef TEXT
#undef NUMBER

/** A complete host object whose numbers are 70000, 70001, ... and whose arrays all differ. */
struct HostObject {
    Object record;
    std::deque<Object> list_boxes{10};
    std::deque<Array> arrays;
    std::vector<Array **> array_places; /**< in the order in which they are taken */
    std::vector<Object **> list_box_places;

    HostObject() {
        fill(record, accdata_fields);
        for (int i = 0; i < 10; ++i) {
            Object *&place = record.objects["tListBox" + std::to_string(i + 1)];
            place = &list_boxes[static_cast<std::size_t>(i)];
            list_box_places.push_back(&place);
            fill(*place, list_box_fields);
        }
    }
    HostObject(const HostObject &) = delete;
    HostObject &operator=(const HostObject &) = delete;

    void fill(Object &object, const std::vector<std::string> &fields) {
        for (const std::string &field : fields) {
            const std::string name = field.substr(0, field.find(' '));
            if (field.ends_with(" I")) {
                object.numbers[name] = next_number++;
                continue;
            }
            const auto mark = static_cast<unsigned char>(arrays.size());
            arrays.push_back({Bytes(100, mark), {}, 0});
            object.arrays[name] = &arrays.back();
            array_places.push_back(&object.arrays[name]);
        }
    }

    /** All numbers and bytes: equal exactly when nothing changed. */
    std::pair<std::vector<jint>, std::vector<Bytes>> contents() const {
        std::pair<std::vector<jint>, std::vector<Bytes>> all;
        for (const auto &[name, number] : record.numbers) all.first.push_back(number);
        for (const Object &list_box : list_boxes) {
            for (const auto &[name, number] : list_box.numbers) all.first.push_back(number);
        }
        for (const Array &array : arrays) all.second.push_back(array.bytes);
        return all;
    }

    jint next_number = 70000;
};

constexpr jint no_file_open_bytes = 26; // "ファイルが開いていません。"

/** Both ways in which a virtual machine hands out arrays. */
class Bridge : public testing::TestWithParam<bool> {
  protected:
    Bridge() {
        Java_jp_co_korm_wospen_ZikSymAccdata_initFIDs(&vm.env, nullptr);
        Java_jp_co_korm_wospen_ZikSymListBox_initFIDs(&vm.env, nullptr);
    }

    jint run(jint command) {
        host.record.numbers["wVkey"] = command;
        return Java_jp_co_korm_wospen_ZikSym_AccSym(&vm.env, handle(&host.record));
    }

    /** Runs a command that must not be run, and holds what is left behind. */
    void expect_refusal(const std::string &what) {
        host.record.numbers["wVkey"] = ACC_VKEY_FILE_CLOSE;
        const auto before = host.contents();
        vm.release_modes.clear();
        EXPECT_EQ(run(ACC_VKEY_FILE_CLOSE), 0) << what;
        EXPECT_EQ(host.contents(), before) << what << ": the object changed";
        EXPECT_EQ(vm.pinned, 0) << what << ": arrays stayed pinned";
        EXPECT_FALSE(vm.release_modes.contains(0)) << what << ": copied back";
    }

    Vm vm{GetParam()};
    HostObject host;
};

INSTANTIATE_TEST_SUITE_P(arrays, Bridge, testing::Bool(), [](const auto &test) { return test.param ? "copied" : "pinned"; });

TEST_P(Bridge, looks_fields_up_in_order_and_stops_at_the_first_that_is_missing) {
    std::vector<std::string> expected = accdata_fields;
    expected.push_back("tListBox [Ljp/co/korm/wospen/ZikSymListBox;");
    for (int i = 1; i <= 10; ++i) {
        expected.push_back("tListBox" + std::to_string(i) + " Ljp/co/korm/wospen/ZikSymListBox;");
    }
    const auto accdata_lookups = static_cast<int>(expected.size());
    expected.insert(expected.end(), list_box_fields.begin(), list_box_fields.end());
    EXPECT_EQ(vm.lookups, expected);

    for (int missing = 0; missing < std::ssize(expected); ++missing) {
        const bool in_accdata = missing < accdata_lookups;
        vm.lookups.clear();
        vm.lookups_before_failure = in_accdata ? missing : missing - accdata_lookups;
        in_accdata ? Java_jp_co_korm_wospen_ZikSymAccdata_initFIDs(&vm.env, nullptr)
                   : Java_jp_co_korm_wospen_ZikSymListBox_initFIDs(&vm.env, nullptr);
        EXPECT_EQ(static_cast<int>(vm.lookups.size()), vm.lookups_before_failure);
        if (missing != std::ssize(accdata_fields)) expect_refusal("without " + expected[static_cast<std::size_t>(missing)]);

        vm.lookups_before_failure = -1;
        Java_jp_co_korm_wospen_ZikSymAccdata_initFIDs(&vm.env, nullptr);
        Java_jp_co_korm_wospen_ZikSymListBox_initFIDs(&vm.env, nullptr);
    }
    EXPECT_EQ(run(0), 2);
}

TEST_P(Bridge, copies_every_field_in_and_out) {
    Accdata record;
    ASSERT_EQ(JavaAllocStruct(&vm.env, handle(&host.record), &record), 1);
    EXPECT_EQ(vm.pinned, 59);
    jint number = 70000 - 65536;
    unsigned char mark = 0;
    const auto visit = [&](auto &&each_number, auto &&each_array) {
#define AT(field, Field) each_number(record.field);
#define BYTES_AT(field, Field) each_array(record.field);
        ACC_ACCDATA_FIELDS(AT, BYTES_AT)
#undef AT
#undef BYTES_AT
        for (ListBox &list_box : record.tListBox) {
#define AT(field, Field) each_number(list_box.field);
#define BYTES_AT(field, Field) each_array(list_box.field);
            ACC_LISTBOX_FIELDS(AT, BYTES_AT)
#undef AT
#undef BYTES_AT
        }
    };
    visit([&](unsigned short value) { EXPECT_EQ(value, number++); }, [&](unsigned char *bytes) { EXPECT_EQ(bytes[99], mark++); });

    number = 65535;
    visit([&](unsigned short &value) { value = static_cast<unsigned short>(number--); },
          [&](unsigned char *bytes) { bytes[0] = static_cast<unsigned char>(bytes[99] ^ 0xFF); });
    JavaFreeStruct(&vm.env, handle(&host.record), &record);
    EXPECT_EQ(vm.pinned, 0);
    EXPECT_EQ(vm.release_modes, std::set<jint>{0});
    for (const Array &array : host.arrays) EXPECT_EQ(array.bytes[0], array.bytes[99] ^ 0xFF);
    number = 65535;
    const auto expect_numbers = [&](const Object &object, const std::vector<std::string> &fields) {
        for (const std::string &field : fields) {
            if (!field.ends_with(" I")) continue;
            const std::string name = field.substr(0, field.find(' '));
            EXPECT_EQ(object.numbers.at(name), number--) << name;
        }
    };
    expect_numbers(host.record, accdata_fields);
    for (const Object &list_box : host.list_boxes) expect_numbers(list_box, list_box_fields);
}

TEST_P(Bridge, functions_of_single_fields_reach_their_own_field) {
    Accdata record{};
    ListBox list_box{};
    Object &list = host.list_boxes[0];
    JNIEnv *const env = &vm.env;
#define NUMBER_PAIR(from, in, target, object, field, Field)                    \
    EXPECT_EQ(jni_Get##Field##_from_##from(&target, env, handle(&object)), 1); \
    EXPECT_EQ(target.field, object.numbers[#field] - 65536) << #field;         \
    target.field = 65535;                                                      \
    jni_Set##Field##_in_##in(&target, env, handle(&object));                   \
    EXPECT_EQ(object.numbers[#field], 65535) << #field;
#define BYTES_PAIR(from, in, target, object, field, Field)                               \
    EXPECT_EQ(jni_Get##Field##_from_##from(&target, env, handle(&object)), 1);           \
    EXPECT_EQ(vm.pinned, 1) << #field;                                                   \
    target.field[0] = 0xA5;                                                              \
    jni_Set##Field##_in_##in(&target, env, handle(&object));                             \
    EXPECT_EQ(object.arrays[#field]->bytes[0], 0xA5) << #field;                          \
    EXPECT_EQ(vm.pinned, 0) << #field;                                                   \
    vm.refused = object.arrays[#field];                                                  \
    EXPECT_EQ(jni_Get##Field##_from_##from(&target, env, handle(&object)), 0) << #field; \
    EXPECT_EQ(target.field, nullptr) << #field;                                          \
    jni_Set##Field##_in_##in(&target, env, handle(&object));
#define NUMBER(field, Field) NUMBER_PAIR(Accdata, Accdata, record, host.record, field, Field)
#define TEXT(field, Field) BYTES_PAIR(Accdata, Accdata, record, host.record, field, Field)
    ACC_ACCDATA_FIELDS(NUMBER, TEXT)
#undef NUMBER
#undef TEXT
#define NUMBER(field, Field) NUMBER_PAIR(ListBox, ListBox, list_box, list, field, Field)
#define TEXT(field, Field) BYTES_PAIR(ListBox, ListBox, list_box, list, field, Field)
    ACC_LISTBOX_FIELDS(NUMBER, TEXT)
    EXPECT_EQ(vm.release_modes, std::set<jint>{0});
}

TEST_P(Bridge, runs_no_command_when_an_array_or_list_box_cannot_be_had) {
    ASSERT_EQ(host.array_places.size(), 59U);
    for (std::size_t i = 0; i < host.array_places.size(); ++i) {
        Array *&place = *host.array_places[i];
        const std::string what = "array " + std::to_string(i);
        vm.refused = place;
        expect_refusal(what + " refused");
        vm.refused = nullptr;
        Array *const array = std::exchange(place, nullptr);
        expect_refusal(what + " null");
        place = array;
    }
    for (std::size_t i = 0; i < host.list_box_places.size(); ++i) {
        Object *const list_box = std::exchange(*host.list_box_places[i], nullptr);
        expect_refusal("list box " + std::to_string(i + 1) + " null");
        *host.list_box_places[i] = list_box;
    }
    vm.capacity_result = JNI_ENOMEM;
    expect_refusal("no room for references");
    vm.capacity_result = JNI_OK;
    EXPECT_EQ(run(ACC_VKEY_FILE_CLOSE), 0);
    EXPECT_EQ(host.record.numbers["cchMessage"], no_file_open_bytes) << "now the command itself has run";
}

TEST_P(Bridge, list_boxes_come_alone_too) {
    Accdata record;
    jobject const object = handle(&host.record);
    ASSERT_EQ(jni_GetListBox_from_Accdata(&record, &vm.env, object), 1);
    EXPECT_EQ(vm.pinned, 50);
    record.tListBox[9].cchLBItemNum = 7;
    jni_SetListBox_in_Accdata(&record, &vm.env, object);
    EXPECT_EQ(vm.pinned, 0);
    EXPECT_EQ(host.list_boxes[9].numbers["cchLBItemNum"], 7);

    vm.refused = host.list_boxes[9].arrays["lpchLBItemInfo"];
    EXPECT_EQ(jni_GetListBox_from_Accdata(&record, &vm.env, object), 0);
    EXPECT_EQ(jni_GetAll_from_ListBox(&record.tListBox[9], &vm.env, handle(&host.list_boxes[9])), 0);
    EXPECT_EQ(vm.pinned, 0);
    EXPECT_EQ(record.tListBox[0].lpchLBList, nullptr) << "points at elements that went back";
}

TEST_P(Bridge, a_command_asks_for_room_once_and_stays_within_it) {
    vm.references = 0;
    EXPECT_EQ(run(65536 + ACC_VKEY_FILE_CLOSE), 0) << "a code is cut to 16 bits";
    EXPECT_EQ(host.record.numbers["wVkey"], ACC_VKEY_FILE_CLOSE);
    EXPECT_EQ(vm.capacities, std::vector<jint>{vm.references});

    vm.table.EnsureLocalCapacity = nullptr;
    EXPECT_EQ(run(ACC_VKEY_FILE_CLOSE), 0);
    EXPECT_EQ(host.record.numbers["cchMessage"], no_file_open_bytes);
}

TEST_P(Bridge, conversions_write_the_destination_alone) {
    struct {
        const char *name;
        decltype(&Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode) convert;
        Bytes source;
        jint length;
        Bytes expected;
    } const cases[] = {
        {"to Unicode", Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode, {0x82, 0xA0}, 2, {0x30, 0x42, 0}},
        {"to Shift_JIS", Java_jp_co_korm_wospen_ZikNative_AccUnicodeToSjis, {0x30, 0x42}, 2, {0x82, 0xA0, 0}},
        {"nothing", Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode, {0x82, 0xA0}, 0, {0, 0xEE, 0xEE}},
        {"length beyond 16 bits", Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode, {0x82, 0xA0}, 65538, {0x30, 0x42, 0}},
    };
    for (const auto &test : cases) {
        Array source{test.source, {}, 0};
        Array destination{Bytes(3, 0xEE), {}, 0};
        const auto convert = [&](Array *from, Array *to) {
            return test.convert(&vm.env, nullptr, static_cast<jbyteArray>(handle(from)), test.length, static_cast<jbyteArray>(handle(to)));
        };
        EXPECT_EQ(convert(nullptr, &destination), 0) << test.name;
        EXPECT_EQ(convert(&source, nullptr), 0) << test.name;
        for (const Array *refused : {&source, &destination}) {
            vm.refused = refused;
            EXPECT_EQ(convert(&source, &destination), 0) << test.name;
        }
        vm.refused = nullptr;
        EXPECT_EQ(vm.pinned, 0) << test.name;
        EXPECT_EQ(destination.bytes, Bytes(3, 0xEE)) << test.name;
        vm.release_modes.clear();
        EXPECT_EQ(convert(&source, &destination), 1) << test.name;
        EXPECT_EQ(vm.pinned, 0) << test.name;
        EXPECT_EQ(vm.release_modes, (std::set<jint>{0, JNI_ABORT})) << test.name;
        EXPECT_EQ(destination.bytes, test.expected) << test.name;
        EXPECT_EQ(source.bytes, test.source) << test.name;
    }
}

} // namespace
