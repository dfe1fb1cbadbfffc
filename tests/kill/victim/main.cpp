// Works at a desk until it is killed: new records, saves and deletions on two record screens, without a
// pause. What it says on its standard output is all that the killer knows (tests/kill/kill_test.cpp):
//
//   desk FOLDER              the desk, a copy of the one that it was called with
//   will STORE ID MARK       is about to store the record with this mark (ID 0: a new one; "-": to delete it)
//   did STORE ID MARK        has seen it stored

#include <iostream>

#include "files/command_line.h"
#include "support/desk.h"

namespace {

using tolva::support::Desk;

void say(const char* what, const std::string& store, const std::string& id, const std::string& mark) {
    std::cout << what << ' ' << store << ' ' << id << ' ' << mark << std::endl;
}

/// One record screen and what is done on it.
template <class Screen>
struct Worker {
    Desk& desk;
    std::string store;
    Screen& screen;
    tolva::platform::MenuEntry &create, &save, &remove;

    void begin_record() {
        say("will", store, "0", ".");
        desk.choose(create);
        say("did", store, screen.id.text, ".");
    }

    /// The mark stands in several columns, with a note of many lengths: a row that is half old shows.
    void save_record(int number) {
        const std::string mark = "m" + std::to_string(number);
        screen.first.text = screen.last.text = screen.address.text = mark;
        screen.notes.text = mark + std::string(static_cast<std::size_t>(number % 7) * 1100, '.');
        say("will", store, screen.id.text, mark);
        desk.choose(save);
        say("did", store, screen.id.text, mark);
    }

    void delete_record() {
        const std::string id = screen.id.text;
        say("will", store, id, "-");
        desk.host.answers = {1};
        desk.choose(remove);
        say("did", store, id, "-");
    }

    void work(int round) {
        begin_record();
        save_record(3 * round);
        save_record(3 * round + 1);
        if (round % 3 == 0)
            delete_record();
        else
            save_record(3 * round + 2);
        desk.host.boxes.clear();
    }
};

} // namespace

int main(int argc, char** argv) {
    const tolva::files::CommandLine called(argc, argv);
    if (called.words().size() != 1) {
        std::cerr << "usage: tests_victim FOLDER\n";
        return 2;
    }
    Desk desk(called.words()[0]);
    std::cout << "desk " << desk.folder.path().string() << std::endl;
    desk.start();
    desk.click(desk.menu().Command9);
    auto& listings = desk.listings();
    auto& prospects = static_cast<tolva::records::prospect&>(desk.module().prospect());
    Worker<tolva::records::listings> seller{
        desk, "listings", listings, listings.m_newlisting, listings.m_savelisting, listings.m_deletelisting};
    Worker<tolva::records::prospect> buyer{desk,
                                           "prospect",
                                           prospects,
                                           prospects.m_newprospect,
                                           prospects.m_saveprospect,
                                           prospects.m_deleteprospect};
    for (int round = 1; !desk.host.error; ++round) {
        seller.work(round);
        buyer.work(round);
    }
    std::cerr << desk.host.error->text << '\n';
    return 1;
}
