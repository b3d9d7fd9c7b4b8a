// The bridge: fields go where they belong, and whatever the virtual machine refuses, no
// array stays pinned and no command runs.
#include <gtest/gtest.h>

#include <deque>
#include <tuple>

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

    HostObject() {
        fill(record, accdata_fields);
        for (int i = 0; i < 10; ++i) {
            Object &list_box = list_boxes[static_cast<std::size_t>(i)];
            record.objects["tListBox" + std::to_string(i + 1)] = &list_box;
            fill(list_box, list_box_fields);
        }
    }

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
    const auto visit = [&](auto &&number, auto &&array) {
#define NUMBER(field, Field) number(holder.field, object.numbers[#field]);
#define TEXT(field, Field) array(holder.field, object.arrays[#field]->bytes);
        const auto visit_record = [&](Accdata &holder, Object &object) { ACC_ACCDATA_FIELDS(NUMBER, TEXT) };
        const auto visit_list = [&](ListBox &holder, Object &object) { ACC_LISTBOX_FIELDS(NUMBER, TEXT) };
#undef NUMBER
#undef TEXT
        visit_record(record, host.record);
        for (std::size_t i = 0; i < 10; ++i) visit_list(record.tListBox[i], host.list_boxes[i]);
    };
    unsigned short next = 65535;
    visit(
        [&](unsigned short &value, jint object_value) {
            EXPECT_EQ(value, object_value - 65536);
            value = next--;
        },
        [](unsigned char *bytes, const Bytes &object_bytes) {
            EXPECT_EQ(bytes[99], object_bytes[99]);
            bytes[0] = static_cast<unsigned char>(bytes[99] ^ 0xFF);
        });
    JavaFreeStruct(&vm.env, handle(&host.record), &record);
    EXPECT_EQ(vm.pinned, 0);
    EXPECT_EQ(vm.release_modes, std::set<jint>{0});
    visit([](unsigned short value, jint object_value) { EXPECT_EQ(object_value, value); },
          [](unsigned char *, const Bytes &object_bytes) { EXPECT_EQ(object_bytes[0], object_bytes[99] ^ 0xFF); });
}

TEST_P(Bridge, functions_of_single_fields_reach_their_own_field) {
    Accdata Accdata_target{};
    ListBox ListBox_target{};
    std::map<std::string, Object *> objects{{"Accdata", &host.record}, {"ListBox", &host.list_boxes[0]}};
    JNIEnv *const env = &vm.env;
#define NUMBER_OF(Record, field, Field)                                                            \
    EXPECT_EQ(jni_Get##Field##_from_##Record(&Record##_target, env, handle(objects[#Record])), 1); \
    EXPECT_EQ(Record##_target.field, objects[#Record]->numbers[#field] - 65536) << #field;         \
    Record##_target.field = 65535;                                                                 \
    jni_Set##Field##_in_##Record(&Record##_target, env, handle(objects[#Record]));                 \
    EXPECT_EQ(objects[#Record]->numbers[#field], 65535) << #field;
#define TEXT_OF(Record, field, Field)                                                              \
    EXPECT_EQ(jni_Get##Field##_from_##Record(&Record##_target, env, handle(objects[#Record])), 1); \
    Record##_target.field[0] = 0xA5;                                                               \
    jni_Set##Field##_in_##Record(&Record##_target, env, handle(objects[#Record]));                 \
    EXPECT_EQ(objects[#Record]->arrays[#field]->bytes[0], 0xA5) << #field;                         \
    EXPECT_EQ(vm.pinned, 0) << #field;                                                             \
    vm.refused = objects[#Record]->arrays[#field];                                                 \
    EXPECT_EQ(jni_Get##Field##_from_##Record(&Record##_target, env, handle(objects[#Record])), 0); \
    EXPECT_EQ(Record##_target.field, nullptr) << #field;                                           \
    jni_Set##Field##_in_##Record(&Record##_target, env, handle(objects[#Record]));
#define NUMBER(field, Field) NUMBER_OF(Accdata, field, Field)
#define TEXT(field, Field) TEXT_OF(Accdata, field, Field)
    ACC_ACCDATA_FIELDS(NUMBER, TEXT)
#undef NUMBER
#undef TEXT
#define NUMBER(field, Field) NUMBER_OF(ListBox, field, Field)
#define TEXT(field, Field) TEXT_OF(ListBox, field, Field)
    ACC_LISTBOX_FIELDS(NUMBER, TEXT)
    EXPECT_EQ(vm.release_modes, std::set<jint>{0});
}

TEST_P(Bridge, runs_no_command_when_an_array_or_list_box_cannot_be_had) {
    ASSERT_EQ(host.array_places.size(), 59U);
    for (Array **const place : host.array_places) {
        vm.refused = *place;
        expect_refusal("array refused");
        vm.refused = nullptr;
        Array *const array = std::exchange(*place, nullptr);
        expect_refusal("array null");
        *place = array;
    }
    for (auto &[name, list_box] : host.record.objects) {
        Object *const kept = std::exchange(list_box, nullptr);
        expect_refusal(name + " null");
        list_box = kept;
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
    using Native = decltype(&Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode);
    using Case = std::tuple<const char *, Native, Bytes, jint, Bytes>;
    const auto to_unicode = Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode;
    for (const auto &[name, native, source_bytes, length, expected] : {
             Case{"to Unicode", to_unicode, {0x82, 0xA0}, 2, {0x30, 0x42, 0}},
             {"to Shift_JIS", Java_jp_co_korm_wospen_ZikNative_AccUnicodeToSjis, {0x30, 0x42}, 2, {0x82, 0xA0, 0}},
             {"nothing", to_unicode, {0x82, 0xA0}, 0, {0, 0xEE, 0xEE}},
             {"length beyond 16 bits", to_unicode, {0x82, 0xA0}, 65538, {0x30, 0x42, 0}},
         }) {
        SCOPED_TRACE(name);
        Array source{source_bytes, {}, 0};
        Array destination{Bytes(3, 0xEE), {}, 0};
        const auto convert = [&, native = native, length = length](Array *from, Array *to, const Array *refused = nullptr) {
            vm.refused = refused;
            return native(&vm.env, nullptr, static_cast<jbyteArray>(handle(from)), length, static_cast<jbyteArray>(handle(to)));
        };
        EXPECT_EQ(convert(nullptr, &destination), 0);
        EXPECT_EQ(convert(&source, nullptr), 0);
        EXPECT_EQ(convert(&source, &destination, &source), 0);
        EXPECT_EQ(convert(&source, &destination, &destination), 0);
        EXPECT_EQ(vm.pinned, 0);
        EXPECT_EQ(destination.bytes, Bytes(3, 0xEE));
        vm.release_modes.clear();
        EXPECT_EQ(convert(&source, &destination), 1);
        EXPECT_EQ(vm.pinned, 0);
        EXPECT_EQ(vm.release_modes, (std::set<jint>{0, JNI_ABORT}));
        EXPECT_EQ(destination.bytes, expected);
        EXPECT_EQ(source.bytes, source_bytes);
    }
}

} // namespace
