// Both changes of a set made: rows that a person can read, and random edits on two copies.
#include "picker/compare/set_merge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "fuzz/choice.h"
#include "picker/compare/title_tree.h"
#include "picker/disk_form.h"
#include "picker/failure.h"
#include "picker/symbol_data.h"
#include "tests/support/workspace.h"

namespace kigou {
namespace {

SymbolSet parsed(const std::string &blocks, const std::string &file = "例") {
    const std::string text = symbol_file(file, blocks);
    return set_of(Snapshot::of_text(text_form(Sjis(text.begin(), text.end())), "file"));
}

/** "甲=○● 甲／子=☆" as blocks; "|" ends a line. */
SymbolSet set_from(const std::string &titles, const std::string &file = "例") {
    std::string blocks, title;
    for (std::istringstream all(titles); all >> title;) {
        const std::size_t equals = title.find('=');
        std::string lines = title.substr(equals + 1);
        std::ranges::replace(lines, '|', '\n');
        blocks += block(title.substr(0, equals), lines.empty() ? "" : lines + "\n");
    }
    return parsed(blocks, file);
}

std::string told(const SymbolSet &set) {
    std::string told;
    for (const SetBlock &one : set.blocks) {
        std::string lines = to_utf8(one.data);
        std::erase(lines, '\r');
        if (lines.ends_with('\n')) lines.pop_back();
        std::ranges::replace(lines, '\n', '|');
        told += (told.empty() ? "" : " ") + to_utf8(one.path) + "=" + lines;
    }
    return told;
}

TEST(set_merge, makes_both_changes) {
    const struct {
        const char *name, *base, *ours, *theirs, *merged, *conflict;
    } rows[] = {
        {"symbols at different places", "甲=○●◎", "甲=☆○●◎", "甲=○●◎★", "甲=☆○●◎★", ""},
        {"symbols at the same place", "甲=○", "甲=○★", "甲=○☆", "甲=○☆★", ""},
        {"the same symbols", "甲=○", "甲=○☆", "甲=○☆★", "甲=○☆★", ""},
        {"the same symbol at two places", "甲=○●", "甲=☆○●", "甲=○●☆", "甲=☆○●", ""},
        {"one out, one in at its place", "甲=○●◎", "甲=○◎", "甲=○☆◎", "甲=○☆◎", ""},
        {"one moved, another in", "甲=○●◎", "甲=◎○●", "甲=○●◎☆", "甲=◎○●☆", ""},
        {"lines", "甲=○●|◎", "甲=○|●|◎", "甲=○●|◎☆", "甲=○|●|◎☆", ""},
        {"both moved", "甲=○●◎□", "甲=□○●◎", "甲=○□●◎", "甲=□○●◎ 別版：甲=○□●◎",
         "both changed the same symbols of 例／甲; theirs are in 例／別版：甲"},
        {"the same symbols in other lines", "甲=○", "甲=○|☆★", "甲=○☆|★", "甲=○|☆|★", ""},
        {"lines joined", "甲=○|●", "甲=○|●☆", "甲=○●", "甲=○●☆", ""},
        {"moved past another, which moved", "甲=○●◎", "甲=◎●○", "甲=●○◎", "甲=◎●○ 別版：甲=●○◎",
         "both changed the same symbols of 例／甲; theirs are in 例／別版：甲"},
        {"an empty title is not known again", "甲= 乙=○", "丙= 乙=○", "甲=☆ 乙=○", "甲=☆ 丙= 乙=○",
         "one removed 例／甲, which the other changed; it stays"},
        {"two alike renamed", "甲=○ 乙=○", "丙=○ 丁=○", "甲=○★ 乙=○", "丙=○★ 丁=○", ""},
        {"titles", "甲=○ 乙=→", "甲=○ 丙=☆ 乙=→", "甲=○ 乙=→ 丁=★", "甲=○ 丙=☆ 乙=→ 丁=★", ""},
        {"the same new title", "甲=○", "甲=○ 乙=→", "甲=○ 乙=←", "甲=○ 乙=→←", ""},
        {"a title out", "甲=○ 乙=→ 丙=☆", "甲=○ 丙=☆", "甲=○● 乙=→ 丙=☆", "甲=○● 丙=☆", ""},
        {"a title out that changed", "甲=○ 乙=→ 丙=☆", "甲=○ 丙=☆", "甲=○ 乙=→← 丙=☆", "甲=○ 乙=→← 丙=☆",
         "one removed 例／乙, which the other changed; it stays"},
        {"a title out with a new one below", "甲=○ 乙=→", "甲=○", "甲=○ 乙=→ 乙／子=☆", "甲=○ 乙=→ 乙／子=☆",
         "one removed 例／乙, which the other changed; it stays"},
        {"renamed and changed", "甲=○ 乙=→", "甲=○ 丙=→", "甲=○ 乙=→←", "甲=○ 丙=→←", ""},
        {"moved and changed below", "甲=○ 乙=→ 乙／子=☆ 丙=", "甲=○ 丙= 丙／乙=→ 丙／乙／子=☆",
         "甲=○ 乙=→ 乙／子=☆★ 丙=", "甲=○ 丙= 丙／乙=→ 丙／乙／子=☆★", ""},
        {"moved to two places", "甲=○ 乙=→", "甲=○ 丙=→", "甲=○ 丁=→", "甲=○ 丁=→ 丙=→",
         "both moved the same title: it is 例／丙 and 例／丁"},
        {"the order of titles", "甲=○ 乙=→ 丙=☆ 戊=", "戊= 甲=○ 乙=→ 丙=☆", "甲=○ 戊= 乙=→ 丙=☆ 丁=★", "戊= 甲=○ 乙=→ 丙=☆ 丁=★",
         "both changed the order of the titles below 例; it is ours"},
        {"nothing to begin with", "", "甲=○ 乙=→", "甲=● 丙=☆", "甲=○● 乙=→ 丙=☆", ""},
    };
    for (const auto &row : rows) {
        const SymbolSet base = set_from(row.base), ours = set_from(row.ours), theirs = set_from(row.theirs);
        const MergedSet merged = merged_sets(base, ours, theirs);
        EXPECT_EQ(told(merged.set), row.merged) << row.name;
        EXPECT_EQ(merged.conflicts.empty() ? "" : sentence_of(merged.conflicts.front()), row.conflict) << row.name;
        const SymbolSet other_way = merged_sets(base, theirs, ours).set;
        EXPECT_TRUE(!merged.conflicts.empty() || told(other_way) == row.merged) << row.name << ": " << told(other_way);
    }
    EXPECT_EQ(to_utf8(merged_sets(set_from("甲="), set_from("甲="), set_from("甲=", "新")).set.file), "新");
    EXPECT_EQ(sentence_of(merged_sets(set_from("甲="), set_from("甲=", "左"), set_from("甲=", "右")).conflicts.front()),
              "both renamed the set: 左 (ours) and 右");
}

TEST(set_merge, refuses_what_is_no_tree) {
    const SymbolSet sound = set_from("甲=○");
    for (const char *const odd : {"甲=○ 甲=●", "甲／子=☆", "甲=○ 乙= 甲／子=☆"}) {
        EXPECT_THROW(merged_sets(sound, set_from(odd), sound), Failure) << odd;
        EXPECT_THROW(merged_sets(sound, sound, set_from(odd)), Failure) << odd;
    }
}

/** Edits of a set, each symbol and title that comes in a new one. */
class Editor {
  public:
    Editor(std::uint64_t seed, unsigned first) : choice_(seed, first), next_(first) {}

    Sjis fresh() {
        const unsigned cell = next_++;
        const Sjis jis{static_cast<unsigned char>(0xB0 + cell / 94), static_cast<unsigned char>(0xA1 + cell % 94)};
        return text_form(jis);
    }

    void edit(TitleNode &tree) {
        TitleNode *at = &tree;
        while (!at->below.empty() && choice_.below(3) != 0) at = &at->below[choice_.below(at->below.size())];
        const auto offset = [&](std::size_t limit) { return static_cast<std::ptrdiff_t>(choice_.below(limit)); };
        const auto place = at->data.begin() + 2 * offset(at->data.size() / 2 + 1);
        const auto below = at->below.begin() + offset(at->below.size() + 1);
        const std::size_t kind = choice_.below(7);
        if (kind == 0) {
            at->below.insert(below, {fresh(), fresh(), {}});
        } else if (kind == 1) {
            if (below != at->below.end() && choice_.one_in(3)) at->below.erase(below);
        } else if (at == &tree) {
            return;
        } else if (kind == 2) {
            if (choice_.one_in(2)) at->name = fresh();
        } else if (kind == 3) {
            if (place != at->data.end()) at->data.erase(place, place + 2);
        } else {
            const Sjis added = kind == 4 ? Sjis{'\r', '\n'} : fresh();
            at->data.insert(place, added.begin(), added.end());
        }
    }

  private:
    Choice choice_;
    unsigned next_;
};

std::set<Sjis> symbols_of(const TitleNode &node) {
    const std::vector<Sjis> own = symbols_in(node.data);
    std::set<Sjis> all(own.begin(), own.end());
    for (const TitleNode &title : node.below) all.merge(symbols_of(title));
    return all;
}

TEST(set_merge, loses_nothing_of_random_edits) {
    int clean = 0;
    for (std::uint64_t seed = 1; seed <= 2500; ++seed) {
        Editor maker(seed, 0), left(seed, 1000), right(seed, 2000);
        TitleNode base{text_form(Sjis{0xA4, 0xA2}), {}, {}};
        for (int i = 0; i < 30; ++i) maker.edit(base);
        TitleNode ours = base, theirs = base;
        for (int i = 0; i < 6; ++i) left.edit(ours);
        for (int i = 0; i < 6; ++i) right.edit(theirs);
        const MergedSet merged = merged_sets(set_of(base), set_of(ours), set_of(theirs));
        const MergedSet other_way = merged_sets(set_of(base), set_of(theirs), set_of(ours));
        const std::set<Sjis> all = symbols_of(tree_of(merged.set, "merged"));
        const std::set<Sjis> of_ours = symbols_of(ours), of_theirs = symbols_of(theirs), before = symbols_of(base);
        EXPECT_EQ(merged.conflicts.size(), other_way.conflicts.size()) << seed;
        for (const Sjis &symbol : before) {
            const bool stays = of_ours.contains(symbol) && of_theirs.contains(symbol);
            EXPECT_TRUE(!stays || all.contains(symbol)) << seed << ' ' << to_utf8(symbol);
        }
        for (const auto *const side : {&of_ours, &of_theirs}) {
            for (const Sjis &symbol : *side) {
                EXPECT_TRUE(before.contains(symbol) || all.contains(symbol)) << seed << ' ' << to_utf8(symbol);
            }
        }
        if (!merged.conflicts.empty()) continue;
        ++clean;
        EXPECT_EQ(told(merged.set), told(other_way.set)) << seed;
        const TitleNode tree = tree_of(merged.set, "merged");
        for (const SetBlock &title : set_of(base).blocks) {
            const TitleNode *const in_ours = title_at(ours, title.path), *const in_theirs = title_at(theirs, title.path);
            const TitleNode *const now = title_at(tree, title.path);
            if (!in_ours || !in_theirs || !now) continue;
            for (const Sjis &symbol : symbols_in(title.data)) {
                const auto has = [&](const TitleNode &node) { return std::ranges::count(symbols_in(node.data), symbol) != 0; };
                EXPECT_EQ(has(*now), has(*in_ours) && has(*in_theirs)) << seed << ' ' << to_utf8(symbol);
            }
        }
    }
    EXPECT_GT(clean, 800);
}

} // namespace
} // namespace kigou
