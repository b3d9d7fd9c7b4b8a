// The bundled symbol files as a user meets them: every title can be shown, and the numbers hold.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <tuple>

#include "support/host.h"

namespace {

TEST(BundledSets, show_their_symbols_below_every_title) {
    using Case = std::tuple<const char *, std::size_t, std::size_t, int, int>;
    for (const auto &[title, entries, different, blocks, top_level] :
         {Case{"標準の記号", 682, 670, 44, 10}, {"拡張の記号", 74, 74, 9, 5}}) {
        Host host;
        for (const int directory : {2, 3, 4}) host.string(directory, ACC_SOURCE_DIR "/data");
        host.geometry(1, 0);
        ASSERT_EQ(host.open(title), 1) << host.message();
        EXPECT_EQ(host.record.tListBox[0].cchLBItemTotal, top_level) << title;
        ASSERT_EQ(host.run(ACC_VKEY_TREE_TITLES), 1);
        std::istringstream titles(host.displayed());
        std::multiset<std::string> symbols;
        int with_symbols = 0;
        for (std::string path; std::getline(titles, path, '|');) {
            ASSERT_EQ(host.position(path), 1) << path;
            const std::size_t before = symbols.size();
            std::istringstream items(host.shown(host.record.wCurrentList));
            for (std::string item; items >> item;)
                if (item.ends_with("<4>")) symbols.insert(item);
            if (symbols.size() > before) ++with_symbols;
        }
        EXPECT_EQ(symbols.size(), entries) << title;
        EXPECT_EQ(std::set(symbols.begin(), symbols.end()).size(), different) << title;
        EXPECT_EQ(with_symbols, blocks) << title;
        host.close();
        host.geometry(9, 4); // the layout outlives a host
    }
}

} // namespace
