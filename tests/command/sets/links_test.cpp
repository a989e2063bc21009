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
    const struct {
        std::function<int()> operation;
        int result;
        const char *told, *inA, *inB;
    } steps[] = {
        {[&] { return x.book.connectTo(&a); }, 1, "x+A A+x ", "x", ""},
        {[&] { return a.sheets.connectTo(&y); }, 1, "A+y y+A ", "xy", ""},
        {[&] { return a.sheets.connectTo(&x); }, 1, "", "xy", ""},
        {[&] { return x.book.connectTo(&b); }, 1, "x-A A-x x+B B+x ", "y", "x"},
        {[&] { return b.sheets.connectTo(&y); }, 1, "y-A A-y B+y y+B ", "", "xy"},
        {[&] { return b.sheets.disconnect(&x); }, 1, "B-x x-B ", "", "y"},
        {[&] { return b.sheets.disconnect(&x); }, 0, "", "", "y"},
        {[&] { return x.book.connectTo(nullptr); }, 1, "", "", "y"},
        {[&] { return b.sheets.connectTo(nullptr); }, 0, "", "", "y"},
        {[&] { return b.sheets.disconnect(5); }, 1, "", "", "y"},
        {[&] { return b.sheets.disconnect(0); }, 1, "B-y y-B ", "", ""},
        {[&] { return a.sheets.connectTo(&y); }, 1, "A+y y+A ", "y", ""},
        {[&] { return y.book.connectTo(nullptr); }, 1, "y-A A-y y+0 ", "", ""},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        EXPECT_EQ(step.operation(), step.result);
        EXPECT_EQ(takeTold(), step.told);
        EXPECT_EQ(sheetsOf(a), step.inA);
        EXPECT_EQ(sheetsOf(b), step.inB);
    }
}

TEST_F(Links, EndWithEitherObject) {
    {
        Sheet gone('g', &a);
        Book closed('C');
        closed.sheets.connectTo(&x);
        takeTold();
    }
    EXPECT_EQ(takeTold(), "C-x x-C g-A A-g ");
}

/// Callbacks that link, unlink and delete at random, over and over.
struct RandomLinks : Links {
    std::vector<std::shared_ptr<Book>> books{3};
    std::vector<std::shared_ptr<Sheet>> sheets{6};
    std::mt19937 random{11};
    int depth = 0;

    std::size_t pick(std::size_t n) { return random() % n; }
    /// One of the objects, a new one in an empty place.
    auto& oneOf(auto& objects) {
        auto& object = objects[pick(objects.size())];
        if (object) return object;
        object = std::make_shared<typename std::decay_t<decltype(object)>::element_type>('r');
        object->afterChange = [this](int) {
            if (depth < 4 && pick(3) == 0) act();
        };
        return object;
    }
    void act() {
        ++depth;
        auto& book = oneOf(books);
        auto& sheet = oneOf(sheets);
        const std::size_t chosen = pick(11) % 9;
        // As the end sees it that is asked: inside callbacks the two may differ.
        const auto linked = [&, there = std::weak_ptr(book), here = std::weak_ptr(sheet)] {
            const auto heldBook = there.lock();
            const auto heldSheet = here.lock();
            if (!heldBook || !heldSheet) return false;
            return chosen % 2 ? heldBook->sheets.isInSet(heldSheet.get()) != 0
                              : heldSheet->book == heldBook.get();
        };
        const bool before = linked();
        const std::function<int()> operations[] = {
            [&] { return sheet->book.connectTo(book.get()); },
            [&] { return book->sheets.connectTo(sheet.get()); },
            [&] { return before && sheet->book.disconnect(); },
            [&] { return book->sheets.disconnect(sheet.get()); },
            [&] { return book->sheets.disconnectAll(); },
            [&] { return book.reset(), 0; },
            [&] { return sheet.reset(), 0; },
            [&] { return book->sheets = oneOf(books)->sheets, 0; },
            [&] { return sheet->book = oneOf(sheets)->book, 0; },
        };
        const int result = operations[chosen]();
        if (chosen < 4) {
            EXPECT_EQ(result, chosen < 2 ? linked() : before && !linked()) << chosen;
        }
        --depth;
    }
};

TEST_F(RandomLinks, AgreeAndAnswerTheTruthWhateverCallbacksDo) {
    for (int i = 0; i < 20000; ++i) {
        act();
        int held = 0;
        for (const auto& book : books) held += book ? static_cast<int>(sheetsOf(*book).size()) : 0;
        const auto linked = std::count_if(sheets.begin(), sheets.end(),
                                          [](const auto& sheet) { return sheet && sheet->book; });
        ASSERT_EQ(held, linked) << i;
    }
    depth = 99;
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
        return takeTold();
    }
    std::unique_ptr<DispatchServer> server = std::make_unique<DispatchServer>();
    Client a{'a', server.get()}, b{'b', server.get()}, c{'c', server.get()};
    LRESULT result = -1;
};

TEST_F(Dispatch, AsksFirstWhoHandledTheLastMessage) {
    EXPECT_EQ(asked(), "abc");
    EXPECT_EQ(result, 'c') << "of the last client asked";
    c.handles = true;
    EXPECT_EQ(asked(), "abc");
    EXPECT_EQ(asked(), "c");
    c.handles = false;
    EXPECT_EQ(asked(), "cba") << "exchanged, not rotated";
    b.handles = true;
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(asked(1), "cba") << "everybody, in the same order as before";

    server->unregisterClient(&b);
    EXPECT_EQ(asked(), "ca");
    DispatchServer second(*server);
    EXPECT_EQ(asked(), "") << "a copy takes the clients over";
    EXPECT_EQ(a.getServer(), &second);
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
