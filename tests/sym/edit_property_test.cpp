// Random edits of random files against a model: a list of paths and data.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "support/editing.h"
#include "support/text.h"

namespace {

using Random = std::mt19937;

std::size_t below(Random &random, std::size_t limit) {
    return static_cast<std::size_t>(random()) % limit;
}

const char *const names[] = {"A", "AB", "ABC", "B", "あ", "メ^", "矢印"};

std::string random_path(Random &random) {
    std::string path = names[below(random, 7)];
    for (std::size_t depth = below(random, 4); depth > 0; --depth) path += std::string("／") + names[below(random, 7)];
    return path;
}

std::string random_data(Random &random, const char *line_end) {
    std::string data;
    for (std::size_t i = below(random, 8); i > 0; --i) {
        const char *const units[] = {"→", "☆", "ab", "--", line_end};
        data += units[below(random, 5)];
    }
    return data + (data.ends_with("--") ? "→" : "");
}

/** Up to that many blocks; one in so many lies a level lower than its path says. */
std::string random_file(Random &random, std::size_t most_blocks = 8, std::size_t odd = 8) {
    std::string blocks = below(random, 4) == 0 ? "remark\n" : "";
    for (std::size_t i = below(random, most_blocks + 1); i > 0; --i) {
        if (below(random, 6) == 0) blocks += "\nbetween\n";
        if (below(random, odd) == 0) blocks += "［x／y］"; // a second bracket on the line: a level more
        std::string one = block(random_path(random), random_data(random, "\n"));
        if (below(random, 8) == 0) one.insert(one.find('\n') + 1, "note\n");
        if (below(random, 8) == 0) one.insert(one.size() - 1, "---");
        blocks += one;
    }
    if (below(random, 5) == 0 && blocks.ends_with("-\n")) blocks.erase(blocks.size() - 41); // no end line
    return symbol_file("例", blocks);
}

bool is_below(const std::string &path, const std::string &title) {
    return path.starts_with(title + "／");
}

/** The model's answer to an edit of the first block of that path. */
void apply(Blocks &model, int command, const std::string &path, const std::string &operand) {
    const auto first = std::find_if(model.begin(), model.end(), [&](const auto &b) { return b.first == path; });
    if (command == ACC_VKEY_DATA_REGISTER) {
        first->second = to_sjis(operand);
    } else if (command == ACC_VKEY_TITLE_ADD) {
        auto place = model.end();
        if (!path.empty()) {
            place = first + 1;
            for (auto b = first + 1; b != model.end(); ++b) {
                if (is_below(b->first, path)) place = b + 1;
            }
        }
        model.insert(place, {(path.empty() ? "" : path + "／") + operand, ""});
    } else if (command == ACC_VKEY_TITLE_CHANGE) {
        const std::size_t last = path.rfind("／");
        const std::string renamed = (last == std::string::npos ? "" : path.substr(0, last) + "／") + operand;
        for (auto &b : model) {
            if (&b == &*first || is_below(b.first, path)) b.first.replace(0, path.size(), renamed);
        }
    } else {
        Blocks kept;
        for (auto &b : model) {
            if (&b != &*first && !is_below(b.first, path)) kept.push_back(b);
        }
        model = kept;
    }
}

std::vector<int> levels() {
    std::vector<int> result;
    for (const TempInfo &r : read_temp().records) result.push_back(r.usLevel);
    return result;
}

/** What a list without headers must show of each path; one scan a title, one more for each child. */
std::map<std::string, std::string> lists_by_definition(const Temp &temp) {
    std::map<std::string, const TempInfo *> nodes; // the first record of each path
    for (const TempInfo &r : temp.records) nodes.emplace(text(r.ucPath), &r);
    const auto is_child = [](const TempInfo &r, const TempInfo &of) {
        const std::string path = text(r.ucPath), parent = text(of.ucPath);
        const std::size_t both = std::min(path.size(), parent.size());
        return r.usLevel == of.usLevel + 1 && path.compare(0, both, parent, 0, both) == 0;
    };
    std::map<std::string, std::string> lists;
    for (const auto &[path, node] : nodes) {
        std::string &list = lists[path];
        const auto add = [&](const std::string &sjis, int kind) {
            list += (list.empty() ? "" : " ") + to_utf8(sjis) + '<' + std::to_string(kind) + '>';
        };
        for (const TempInfo &r : temp.records) {
            if (!is_child(r, *node)) continue;
            const TempInfo &child = *nodes.at(text(r.ucPath));
            const auto below_it = [&](const TempInfo &other) { return is_child(other, child); };
            add(text(r.ucPath), std::any_of(temp.records.begin(), temp.records.end(), below_it) ? 3 : 2);
        }
        for (std::size_t at = node->ulDataPos; at < node->ulDataPos + 2 * node->ulDataLen; at += 2) {
            if (temp.text.compare(at, 2, "\r\n") != 0) add(temp.text.substr(at, 2), 4);
        }
    }
    return lists;
}

TEST(lists, show_what_the_definition_of_a_child_says_in_odd_trees_too) {
    Random random(1);
    for (int round = 0; round < 60; ++round) {
        Editing e(random_file(random, 25, 4));
        e.host.geometry(0, 1);
        for (const auto &[path, list] : lists_by_definition(read_temp())) {
            e.host.position(to_utf8(path));
            EXPECT_EQ(e.host.shown(e.host.record.wCurrentList), list) << to_utf8(path) << " round " << round;
        }
    }
}

TEST(random_edits, do_what_the_model_does_and_survive_a_save) {
    const int commands[] = {ACC_VKEY_TITLE_ADD, ACC_VKEY_TITLE_CHANGE, ACC_VKEY_TITLE_DELETE, ACC_VKEY_DATA_REGISTER};
    int edits_made = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        Editing e(random_file(random));
        Blocks model = blocks_of(read_temp());
        for (int step = 0; step < 12; ++step) {
            const int command = commands[below(random, 4)];
            std::string path =
                model.empty() || (command == ACC_VKEY_TITLE_ADD && below(random, 3) == 0) ? "" : model[below(random, model.size())].first;
            const std::string operand = command == ACC_VKEY_DATA_REGISTER ? random_data(random, "\r\n") : names[below(random, 7)];
            if (path.empty() && command != ACC_VKEY_TITLE_ADD) continue;
            e.focus(path.empty() ? "例" : "例／" + path);
            const Temp before = read_temp();
            const int result = e.edit(command, operand);
            if (result == 2) { // refused: a title that exists
                ASSERT_EQ(e.host.message(), "記号タイトルが既に存在します。");
                ASSERT_EQ(read_temp().text, before.text);
            } else {
                // 0: a list on the way up shows a path that an odd file does not hold
                ASSERT_TRUE(result == 1 || e.host.message() == "ファイルの読み込みに失敗しました。");
                apply(model, command, path, operand);
                ++edits_made;
            }
            ASSERT_EQ(blocks_of(read_temp()), model) << "command " << command << ' ' << path << ' ' << operand;
        }
        const std::vector<int> levels_before = levels();
        ASSERT_EQ(e.save("例"), 1) << e.host.message();
        const std::string saved = read_file(e.ws.common / "a.kig");
        e.host.close();
        ASSERT_EQ(e.host.open("例"), 1) << e.host.message();
        ASSERT_EQ(blocks_of(read_temp()), model);
        ASSERT_EQ(levels(), levels_before);
        ASSERT_EQ(e.save("例"), 1);
        ASSERT_EQ(read_file(e.ws.common / "a.kig"), saved);
    }
    EXPECT_GT(edits_made, 1500);
}

} // namespace
