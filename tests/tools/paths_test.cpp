#include "files/file_system.h"
#include "tools/tolva_data.h"

namespace tolva::tools {
namespace {

/// Names that the command line hands over and messages hand back.
class Paths : public TolvaData {
  protected:
    /// Every command at a file in a new folder under such a name.
    void work_in(const std::string& name) {
        const auto disk = files::make_disk();
        const std::string room = folder.file(name);
        disk->make_folder(room);
        const auto at = [&](const std::string& file) { return room + "/" + name + file; };
        const std::string file = at(".mdb");
        output({"make", file, write("schema", "table t\nid long\nname text 20\n")});
        EXPECT_EQ(output({"load", file, "t"}, "id\tname\n1\tZoë\n2\t日本\n3\tÞór\n"), "3 rows loaded\n");
        EXPECT_EQ(output({"query", file, "select id from t where name = 'zoë'"}), "id\n1\n");
        EXPECT_EQ(output({"set", file, "select * from t where id = 2", "name=Ærø – 日"}), "1 row changed\n");
        output({"compact", file, at(" copy.mdb")});
        EXPECT_EQ(output({"dump", at(" copy.mdb"), "t"}), "id\tname\n1\tZoë\n2\tÆrø – 日\n3\tÞór\n");
        EXPECT_EQ(output({"check", file, at(" copy.mdb")}), "");
        EXPECT_EQ(disk->list(room), (std::vector<std::string>{name + " copy.mdb", name + ".mdb"}));
        EXPECT_EQ(run({"tables", at(" gone.mdb")}).err,
                  "tolva-data: Could not find file '" + at(" gone.mdb") + "'.\n");
    }
};

TEST_F(Paths, NamesMayHaveLettersOfAnyLanguage) {
    work_in("Zoë Þór – Kunden 日本");
}

TEST_F(Paths, NamesMayHaveWhatACommandLineTakesForItsOwn) {
    work_in("50% & 'more' ^ (old); $HOME %PATH%");
}

TEST_F(Paths, LongOnesAreAsGoodAsShortOnes) {
    const std::string name(180, 'n'); // with the file's own name far beyond what Windows' plain calls take
    work_in(name);
}

} // namespace
} // namespace tolva::tools
