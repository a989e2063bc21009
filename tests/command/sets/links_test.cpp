// Links between one object and many, and the dispatch of messages over them.
#include "toolbox/links.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "toolbox/dispatch.h"

namespace {

/// What the callbacks were told, in order.
std::string told;

struct Sheet;

struct Book {
    explicit Book(char letter);
    void changed(Many<Book, Sheet>&, Sheet* sheet, int connected);

    char name;
    std::function<void(int connected)> afterChange;
    Many<Book, Sheet> sheets;
};

struct Sheet {
    explicit Sheet(char letter, Book* first = nullptr)
        : name(letter), book(this, &Book::sheets, &Sheet::changed, first) {}
    void changed(One<Sheet, Book>&, Book* other, int connected);

    char name;
    std::function<void(int connected)> afterChange;
    One<Sheet, Book> book;
};

void tell(char here, char there, int connected) {
    told += {here, connected ? '+' : '-', there, ' '};
}

Book::Book(char letter) : name(letter), sheets(this, &Sheet::book, 5, &Book::changed) {}

void Book::changed(Many<Book, Sheet>&, Sheet* sheet, int connected) {
    tell(name, sheet->name, connected);
    // By value: what is called may delete this book.
    if (const auto action = afterChange) action(connected);
}

void Sheet::changed(One<Sheet, Book>&, Book* other, int connected) {
    tell(name, other ? other->name : '0', connected);
    if (const auto action = afterChange) action(connected);
}

/// The sheets of a book, checked to point back to it.
std::string sheetsOf(const Book& book) {
    std::string names;
    for (int i = 0; i < book.sheets.getCount(); ++i) {
        names += book.sheets[i]->name;
        EXPECT_EQ(book.sheets[i]->book, &book);
    }
    return names;
}

struct Links : ::testing::Test {
    Links() { told.clear(); }
    std::string takeTold() { return std::exchange(told, {}); }

    Book a{'A'}, b{'B'};
    Sheet x{'x'}, y{'y'}, z{'z'};
};

TEST_F(Links, AgreeWhicheverEndIsAsked) {
    EXPECT_EQ(x.book.connectTo(&a), 1);
    EXPECT_EQ(takeTold(), "x+A A+x ");
    EXPECT_EQ(a.sheets.connectTo(&y), 1);
    EXPECT_EQ(takeTold(), "A+y y+A ");
    EXPECT_EQ(sheetsOf(a), "xy");
    EXPECT_EQ(x.book.connectTo(&a), 1);
    EXPECT_EQ(a.sheets.connectTo(&x), 1);
    EXPECT_EQ(takeTold(), "") << "linked already";

    EXPECT_EQ(x.book.connectTo(&b), 1);
    EXPECT_EQ(takeTold(), "x-A A-x x+B B+x ");
    EXPECT_EQ(b.sheets.connectTo(&y), 1);
    EXPECT_EQ(takeTold(), "y-A A-y B+y y+B ");
    EXPECT_EQ(sheetsOf(a), "");
    EXPECT_EQ(sheetsOf(b), "xy");

    EXPECT_EQ(b.sheets.disconnect(&x), 1);
    EXPECT_EQ(takeTold(), "B-x x-B ");
    EXPECT_EQ(b.sheets.disconnect(&x), 0);
    EXPECT_EQ(x.book.disconnect(), 0);
    EXPECT_EQ(x.book.connectTo(nullptr), 1) << "linked to nothing already";
    EXPECT_EQ(b.sheets.connectTo(nullptr), 0);
    EXPECT_EQ(b.sheets.disconnect(5), 1);
    EXPECT_EQ(takeTold(), "");
    EXPECT_EQ(b.sheets.disconnect(0), 1);
    EXPECT_EQ(takeTold(), "B-y y-B ");
    a.sheets.connectTo(&y);
    takeTold();
    EXPECT_EQ(y.book.connectTo(nullptr), 1);
    EXPECT_EQ(takeTold(), "y-A A-y y+0 ");
}

TEST_F(Links, AreMovedByAssignment) {
    for (Sheet* sheet : {&x, &y, &z}) a.sheets.connectTo(sheet);
    Sheet other('o', &b);
    EXPECT_EQ(a.sheets.swap(0, 2), 1);
    b.sheets = a.sheets;
    EXPECT_EQ(sheetsOf(b), "zyx");
    EXPECT_EQ(sheetsOf(a), "");
    EXPECT_EQ(other.book, nullptr);

    other.book = x.book;
    EXPECT_EQ(sheetsOf(b), "zyxo") << "one end more on the same book";
    One<Sheet, Book>& same = x.book;
    x.book = same;
    b.sheets = *&b.sheets;
    EXPECT_EQ(sheetsOf(b), "zyxo");
}

TEST_F(Links, EndWithEitherObject) {
    {
        Sheet gone('g', &a);
        Book closed('C');
        closed.sheets.connectTo(&x);
        takeTold();
    }
    EXPECT_EQ(takeTold(), "C-x x-C g-A A-g ");
    EXPECT_EQ(sheetsOf(a), "");
    EXPECT_EQ(x.book, nullptr);
}

TEST_F(Links, LeaveTheLastWordToTheCallback) {
    x.afterChange = [this](int connected) {
        if (connected) x.book.disconnect();
    };
    EXPECT_EQ(x.book.connectTo(&a), 0);
    EXPECT_EQ(takeTold(), "x+A x-A ");
    EXPECT_EQ(a.sheets.connectTo(&x), 0);
    EXPECT_EQ(takeTold(), "A+x x+A x-A A-x ");
    EXPECT_EQ(sheetsOf(a), "");

    x.afterChange = nullptr;
    a.afterChange = [this](int connected) {
        if (connected) x.book.connectTo(&b);
    };
    EXPECT_EQ(a.sheets.connectTo(&x), 0) << "linked elsewhere by the callback";
    EXPECT_EQ(takeTold(), "A+x x+B B+x A-x ");
    EXPECT_EQ(sheetsOf(b), "x");
    a.afterChange = nullptr;
    x.afterChange = [this](int connected) {
        if (!connected) x.book.connectTo(&b);
    };
    EXPECT_EQ(x.book.disconnect(), 0) << "linked again by the callback";
    EXPECT_EQ(takeTold(), "x-B x+B ");
    EXPECT_EQ(x.book.connectTo(&a), 0);
    b.afterChange = [this](int connected) {
        if (!connected) b.sheets.connectTo(&x);
    };
    EXPECT_EQ(b.sheets.disconnect(&x), 0);
    EXPECT_EQ(b.sheets.disconnectAll(), 1) << "and comes to an end";
    EXPECT_EQ(sheetsOf(b), "x");
    x.afterChange = b.afterChange = nullptr;
}

/// A book and two sheets of it, in memory of their own, and a callback that deletes one of them.
struct DyingLinks : Links {
    std::unique_ptr<Book> book = std::make_unique<Book>('D');
    std::unique_ptr<Sheet> first = std::make_unique<Sheet>('f'),
                           second = std::make_unique<Sheet>('s');
};

TEST_F(DyingLinks, EndInsideCallbacks) {
    struct Case {
        const char* what;
        bool linked;  // the first sheet, to the book
        std::function<int(DyingLinks&)> operation;
        int result;
    };
    using T = DyingLinks&;
    const Case cases[] = {
        {"unlinking by the sheet", true, [](T t) { return t.first->book.disconnect(); }, 1},
        {"unlinking by the book", true, [](T t) { return t.book->sheets.disconnect(0); }, 1},
        {"unlinking all", true, [](T t) { return t.book->sheets.disconnectAll(); }, 1},
        {"moving a sheet", true, [](T t) { return t.first->book.connectTo(&t.a); }, -1},
        {"taking a sheet", true, [](T t) { return t.b.sheets.connectTo(t.first.get()); }, -1},
        {"linking by the sheet", false, [](T t) { return t.first->book.connectTo(t.book.get()); },
         0},
        {"linking by the book", false, [](T t) { return t.book->sheets.connectTo(t.first.get()); },
         0},
        {"moving all away", true, [](T t) { return (t.b.sheets = t.book->sheets, 1); }, 1},
        {"moving others in", true, [](T t) { return (t.book->sheets = t.a.sheets, 1); }, 1},
        {"assigning a link", true, [](T t) { return (t.first->book = t.y.book, 1); }, 1},
    };
    for (const Case& c : cases)
        for (const std::string dying : {"book", "sheet", "both"})
            for (const bool asksSheet : {false, true}) {
                SCOPED_TRACE(std::string(c.what) + ", " + dying + (asksSheet ? " by sheet" : ""));
                book = std::make_unique<Book>('D');
                first = std::make_unique<Sheet>('f', c.linked ? book.get() : nullptr);
                second = std::make_unique<Sheet>('s', book.get());
                y.book.connectTo(&a);
                (asksSheet ? first->afterChange : book->afterChange) = [&](int) {
                    if (dying != "sheet") book.reset();
                    if (dying != "book") first.reset();
                };
                const int result = c.operation(*this);
                if (c.result >= 0) {
                    EXPECT_EQ(result, c.result);
                }
                if (book) book->afterChange = nullptr;
                if (first) first->afterChange = nullptr;
                if (book) sheetsOf(*book);
                sheetsOf(a);
                sheetsOf(b);
                for (Sheet* each : {first.get(), second.get(), &y})
                    if (each && each->book) {
                        Book* const held = each->book;
                        EXPECT_TRUE(held->sheets.isInSet(each));
                    }
            }
}

/// Callbacks that link, unlink and delete at random, over and over: nothing is left dangling, and
/// each owner has heard of just the changes of its own end.
TEST(RandomLinks, AgreeWhateverCallbacksDo) {
    struct World {
        std::vector<std::unique_ptr<Book>> books;
        std::vector<std::unique_ptr<Sheet>> sheets;
        std::mt19937 random{11};
        int depth = 0;

        std::size_t pick(std::size_t n) { return random() % n; }
        void act() {
            if (depth > 3) return;
            ++depth;
            std::unique_ptr<Book>& book = books[pick(books.size())];
            std::unique_ptr<Sheet>& sheet = sheets[pick(sheets.size())];
            if (!book) {
                book = std::make_unique<Book>('b');
                book->afterChange = [this](int) { react(); };
            }
            if (!sheet) {
                sheet = std::make_unique<Sheet>('s');
                sheet->afterChange = [this](int) { react(); };
            }
            switch (pick(9)) {
                case 0:
                case 1:
                    sheet->book.connectTo(book.get());
                    break;
                case 2:
                case 3:
                    book->sheets.connectTo(sheet.get());
                    break;
                case 4:
                    sheet->book.disconnect();
                    break;
                case 5:
                    book->sheets.disconnect(0);
                    break;
                case 6:
                    static_cast<void>(std::unique_ptr<Book>(std::move(book)));
                    break;
                case 7:
                    static_cast<void>(std::unique_ptr<Sheet>(std::move(sheet)));
                    break;
                case 8:
                    if (Book* other = books[pick(books.size())].get()) book->sheets = other->sheets;
                    break;
            }
            --depth;
        }
        void react() {
            if (pick(3) == 0) act();
        }
    } world;
    world.books.resize(3);
    world.sheets.resize(6);
    for (int i = 0; i < 20000; ++i) {
        world.act();
        int held = 0;
        for (const auto& book : world.books) {
            if (!book) continue;
            sheetsOf(*book);
            held += book->sheets.getCount();
        }
        const auto linked = std::count_if(world.sheets.begin(), world.sheets.end(),
                                          [](const auto& sheet) { return sheet && sheet->book; });
        ASSERT_EQ(held, linked) << i;
    }
    world.depth = 99;
    told.clear();
}

struct Client : DispatchClient {
    Client(char letter, DispatchServer* server) : DispatchClient(server), name(letter) {}
    LRESULT handleMessage(TarvMess& message) override {
        told += name;
        if (handles) message.handled = 1;
        const char result = name;
        if (action) std::exchange(action, nullptr)();
        return result;
    }
    char name;
    bool handles = false;
    std::function<void()> action;
};

struct Dispatch : Links {
    std::string asked(int broadcast = 0) {
        TarvMess message(nullptr, WM_COMMAND, 7, 0, 0);
        result = server->dispatch(message, broadcast);
        handled = message.handled;
        return takeTold();
    }
    std::unique_ptr<DispatchServer> server = std::make_unique<DispatchServer>();
    Client a{'a', server.get()}, b{'b', server.get()}, c{'c', server.get()};
    LRESULT result = -1;
    int handled = -1;
};

TEST_F(Dispatch, AsksFirstWhoHandledTheLastMessage) {
    EXPECT_EQ(asked(), "abc");
    EXPECT_EQ(result, 'c') << "of the last client asked";
    c.handles = true;
    EXPECT_EQ(asked(), "abc");
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(asked(), "c");
    c.handles = false;
    EXPECT_EQ(asked(), "cba") << "exchanged, not rotated";
    b.handles = true;
    EXPECT_EQ(asked(1), "cba") << "everybody, in the same order as before";
    EXPECT_EQ(asked(1), "cba");
    EXPECT_EQ(handled, 0);
    EXPECT_EQ(result, 'a');

    server->unregisterClient(&b);
    EXPECT_EQ(asked(), "ca");
    DispatchServer second(*server);
    EXPECT_EQ(asked(), "") << "a copy takes the clients over";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(a.getServer(), &second);
}

TEST_F(Dispatch, LetsOnlyItsMessagesPass) {
    using Server = DispatchServer;
    struct Case {
        UINT number;
        int mask, handled;
        bool passes;
    };
    for (const Case& each : {Case{0x111, Server::PassAll, 0, true},
                             {0x111, Server::PassAll, 1, false},
                             {0x1FF, Server::OnlyMouse, 0, false},
                             {0x200, Server::OnlyMouse, 0, true},
                             {0x209, Server::OnlyMouse, 0, true},
                             {0x20A, Server::OnlyMouse, 0, false},
                             {0x111, Server::OnlyCommands, 0, true},
                             {0x110, Server::OnlyCommands, 0, false},
                             {0x111, Server::OnlyMouse | Server::OnlyCommands, 0, false},
                             {0x200, Server::OnlyMouse | Server::OnlyCommands, 0, false}}) {
        DispatchServer masked(static_cast<Server::DispatchMask>(each.mask));
        a.registerWithServer(&masked);
        TarvMess message(nullptr, each.number, 0, 0, each.handled);
        EXPECT_EQ(masked.dispatch(message, 0), each.passes ? 'a' : 0) << each.number;
        EXPECT_EQ(takeTold(), each.passes ? "a" : "") << each.number;
    }
}

TEST_F(Dispatch, GoesOnWhileClientsComeAndGo) {
    a.action = [this] { b.unregisterWithServer(); };
    EXPECT_EQ(asked(), "abc") << "who left meanwhile still gets the message";
    EXPECT_EQ(asked(), "ac");

    auto late = std::make_unique<Client>('l', nullptr);
    a.action = [&] { late->registerWithServer(server.get()); };
    EXPECT_EQ(asked(), "ac");
    EXPECT_EQ(asked(), "acl");

    a.action = [&] { late.reset(); };
    EXPECT_EQ(asked(), "ac") << "but not who is gone";

    a.action = [this] {
        TarvMess inner(nullptr, WM_COMMAND, 8, 0, 0);
        c.action = [this] { server.reset(); };
        server->dispatch(inner, 0);
    };
    c.handles = true;
    TarvMess message(nullptr, WM_COMMAND, 7, 0, 0);
    EXPECT_EQ(server->dispatch(message, 0), 'c');
    EXPECT_EQ(takeTold(), "aacc") << "the clients outlive the server";
    EXPECT_EQ(a.getServer(), nullptr);
}

}  // namespace
