// The bridge: fields go where they belong, and whatever the virtual machine refuses, no
// array stays pinned and no command runs.
#include <cstring>
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
            arrays.push_back({Bytes(100, static_cast<unsigned char>(arrays.size())), {}});
            object.arrays[name] = &arrays.back();
            array_places.push_back(&object.arrays[name]);
        }
    }

    jint next_number = 70000;
};

class Bridge : public testing::Test {
  protected:
    Bridge() { look_up(); }

    void look_up() {
        Java_jp_co_korm_wospen_ZikSymAccdata_initFIDs(env, nullptr);
        Java_jp_co_korm_wospen_ZikSymListBox_initFIDs(env, nullptr);
    }

    jint run(jint command) {
        host.record.numbers["wVkey"] = command;
        return Java_jp_co_korm_wospen_ZikSym_AccSym(env, object);
    }

    /** Runs a command that must not be run, and holds what is left behind. */
    void expect_refusal(const std::string &what) {
        vm.changed = false;
        EXPECT_EQ(run(ACC_VKEY_FILE_CLOSE), 0) << what;
        EXPECT_FALSE(vm.changed) << what << ": the object changed";
        EXPECT_TRUE(vm.out.empty()) << what << ": arrays stayed pinned";
    }

    FakeVm vm;
    HostObject host;
    JNIEnv *const env = &vm.env;
    jobject const object = handle(&host.record);
};

TEST_F(Bridge, looks_fields_up_and_stops_at_the_first_that_is_missing) {
    std::vector<std::string> expected = accdata_fields;
    expected.push_back("tListBox [Ljp/co/korm/wospen/ZikSymListBox;");
    for (int i = 1; i <= 10; ++i) expected.push_back("tListBox" + std::to_string(i) + " Ljp/co/korm/wospen/ZikSymListBox;");
    const std::size_t accdata_lookups = expected.size();
    expected.insert(expected.end(), list_box_fields.begin(), list_box_fields.end());
    EXPECT_EQ(vm.lookups, expected);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        vm.missing = expected[i];
        vm.lookups.clear();
        look_up();
        EXPECT_EQ(vm.lookups.size(), i < accdata_lookups ? i + list_box_fields.size() : i) << "looked on after " << vm.missing;
        if (i != accdata_fields.size()) expect_refusal("without " + vm.missing);
    }
}

TEST_F(Bridge, copies_every_field_in_and_out) {
    Accdata record;
    ASSERT_EQ(JavaAllocStruct(env, object, &record), 1);
    EXPECT_EQ(vm.out.size(), 59U);
    const auto visit = [&](auto &&number, auto &&array) {
#define NUMBER(field, Field) number(holder.field, from.numbers[#field]);
#define TEXT(field, Field) array(holder.field, from.arrays[#field]->bytes);
        const auto visit_record = [&](Accdata &holder, Object &from) { ACC_ACCDATA_FIELDS(NUMBER, TEXT) };
        const auto visit_list = [&](ListBox &holder, Object &from) { ACC_LISTBOX_FIELDS(NUMBER, TEXT) };
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
    JavaFreeStruct(env, object, &record);
    EXPECT_TRUE(vm.out.empty());
    visit([](unsigned short value, jint object_value) { EXPECT_EQ(object_value, value); },
          [](unsigned char *, const Bytes &object_bytes) { EXPECT_EQ(object_bytes[0], object_bytes[99] ^ 0xFF); });
}

TEST_F(Bridge, functions_of_single_fields_reach_the_field_of_their_name) {
    Accdata accdata;
    ListBox list_box;
    const auto reach = [&](auto get, auto set, auto *record, Object &from, std::string name) {
        name[0] = static_cast<char>(name[0] - 'A' + 'a');
        vm.asked.clear();
        EXPECT_EQ(get(record, env, handle(&from)), 1) << name;
        set(record, env, handle(&from));
        EXPECT_EQ(vm.asked, (std::vector{name, name}));
        EXPECT_TRUE(vm.out.empty()) << name;
    };
#define REACH(field, Field) reach(jni_Get##Field##_from_Accdata, jni_Set##Field##_in_Accdata, &accdata, host.record, #Field);
    ACC_ACCDATA_FIELDS(REACH, REACH)
#undef REACH
#define REACH(field, Field) reach(jni_Get##Field##_from_ListBox, jni_Set##Field##_in_ListBox, &list_box, host.list_boxes[0], #Field);
    ACC_LISTBOX_FIELDS(REACH, REACH)
#undef REACH
}

TEST_F(Bridge, a_command_finds_every_string_in_its_place) {
    for (unsigned char n = 1; n <= 5; ++n) host.record.arrays["lpchString" + std::to_string(n)]->bytes = {0, n, 0};
    EXPECT_EQ(run(ACC_VKEY_SET_ATTRIBUTE), 1);
    std::map<std::string, jint> &numbers = host.list_boxes[9].numbers;
    EXPECT_EQ(std::tuple(numbers["cchLBItemNumMax"], numbers["cchLBItemHead"], numbers["cchLBItemLenMax"]), std::tuple(2, 3, 4));
}

TEST_F(Bridge, runs_no_command_when_an_array_or_list_box_cannot_be_had) {
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
}

TEST_F(Bridge, list_boxes_come_alone_too) {
    Accdata record;
    ASSERT_EQ(jni_GetListBox_from_Accdata(&record, env, object), 1);
    EXPECT_EQ(vm.out.size(), 50U);
    record.tListBox[9].cchLBItemNum = 7;
    jni_SetListBox_in_Accdata(&record, env, object);
    EXPECT_TRUE(vm.out.empty());
    EXPECT_EQ(host.list_boxes[9].numbers["cchLBItemNum"], 7);
}

TEST_F(Bridge, what_cannot_be_had_leaves_zeros) {
    Accdata record;
    std::memset(&record, 0xEE, sizeof record);
    const auto expect_zeros = [&](int result, unsigned char *&pointer) {
        EXPECT_EQ(result, 0);
        EXPECT_EQ(pointer, nullptr);
        EXPECT_TRUE(vm.out.empty());
    };
    const jfieldID tenth = env->GetFieldID(nullptr, "tListBox10", "");
    jobject const list_box = handle(&host.list_boxes[9]);
    ListBox *const lists = record.tListBox;
    vm.refused = host.list_boxes[9].arrays["lpchLBItemInfo"];
    expect_zeros(jni_GetLpchLBItemInfo_from_ListBox(&lists[9], env, list_box), lists[9].lpchLBItemInfo);
    expect_zeros(jni_GetAll_from_ListBox(&lists[9], env, list_box), lists[9].lpchLBList);
    expect_zeros(jni_GetListBox_from_Accdata_Index(&record, env, object, tenth, 8), lists[8].lpchLBList);
    expect_zeros(jni_GetListBox_from_Accdata(&record, env, object), lists[0].lpchLBList);
    EXPECT_NE(record.lpchString1, nullptr) << "no list box";
    expect_zeros(JavaAllocStruct(env, object, &record), record.lpchString1);
    EXPECT_EQ(record.wDataUpdate, 0);
}

TEST_F(Bridge, a_command_asks_for_room_once_and_stays_within_it) {
    vm.references = 0;
    EXPECT_EQ(run(65536 + ACC_VKEY_FILE_CLOSE), 0) << "a code is cut to 16 bits";
    EXPECT_EQ(host.record.numbers["wVkey"], ACC_VKEY_FILE_CLOSE);
    EXPECT_EQ(vm.capacities, std::vector<jint>{vm.references});

    vm.table.EnsureLocalCapacity = nullptr;
    EXPECT_EQ(run(ACC_VKEY_FILE_CLOSE), 0);
    EXPECT_EQ(host.record.numbers["cchMessage"], 26) << "ファイルが開いていません。";
    EXPECT_EQ(run(0), 2);
}

TEST_F(Bridge, conversions_write_the_destination_alone) {
    const auto to_unicode = Java_jp_co_korm_wospen_ZikNative_AccSjisToUnicode;
    const auto to_sjis = Java_jp_co_korm_wospen_ZikNative_AccUnicodeToSjis;
    for (const auto &[native, source_bytes, length, expected] : {
             std::tuple<decltype(to_sjis), Bytes, jint, Bytes>{to_unicode, {0x82, 0xA0}, 2, {0x30, 0x42, 0}},
             {to_sjis, {0x30, 0x42}, 2, {0x82, 0xA0, 0}},
             {to_unicode, {0x82, 0xA0}, 0, {0, 0xEE, 0xEE}},
             {to_unicode, {0x82, 0xA0}, 65538, {0x30, 0x42, 0}}, // cut to 16 bits
         }) {
        Array source{source_bytes, {}}, destination{Bytes(3, 0xEE), {}};
        const auto convert = [&, native = native, length = length](Array *from, Array *to, const Array *refused = nullptr) {
            vm.refused = refused;
            return native(env, nullptr, static_cast<jbyteArray>(handle(from)), length, static_cast<jbyteArray>(handle(to)));
        };
        vm.changed = false;
        EXPECT_EQ(convert(nullptr, &destination), 0);
        EXPECT_EQ(convert(&source, nullptr), 0);
        EXPECT_EQ(convert(&source, &destination, &source), 0);
        EXPECT_EQ(convert(&source, &destination, &destination), 0);
        EXPECT_FALSE(vm.changed);
        EXPECT_EQ(convert(&source, &destination), 1);
        EXPECT_TRUE(vm.out.empty());
        EXPECT_EQ(destination.bytes, expected);
        EXPECT_EQ(source.bytes, source_bytes);
    }
}

} // namespace
