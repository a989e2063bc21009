// The list of keys as a user sees it and works in it.
#include "key_list_fixture.h"

namespace {

TEST_F(KeyList, ShowsEveryKeyWithItsSample) {
    open();
    EXPECT_EQ(shown(), (Ids{4, 1, 5, 2, 3}));
    const char* const rows[] = {"FREQ|Frequency|H4|mm|10.0|1|",
                                "VOLT|Tension \340 vide|H1|u1|2.50|2|", "MASS|Mass|H5|mm|12.500|3|",
                                "COUNT|Number of bars|H2|mm|1234||",
                                "NAME|Name|H3|mm|Sample text||"};
    for (int row = 0; row < 5; ++row) {
        std::string line;
        for (int column = 0; column < 6; ++column) line += cell(row, column) + "|";
        EXPECT_EQ(line, rows[row]);
    }
}

TEST_F(KeyList, IsFilteredWhileTheUserTypes) {
    open();
    EXPECT_EQ(focusedControl(), IDC_KEY_LIST_FILTER);
    select({5, 4});
    typeText("e num");
    EXPECT_TRUE(pumpFor([&] { return shown() == Ids{2}; }));
    EXPECT_EQ(selected(), Ids());
    pressKey(VK_RETURN);
    EXPECT_TRUE(pumpFor([&] { return GetFocus() == list(); }));
    dialog->setFilter("");
    EXPECT_EQ(selected(), Ids{2});
}

TEST_F(KeyList, ShowsOneGroup) {
    for (const UINT id : {3, 1}) manager.addIdToGroup(id, 100);
    dialog->addGroup(100, "Labels");
    open();
    SetFocus(dialog->control(IDC_KEY_LIST_GROUP));
    pressKey(VK_DOWN);
    EXPECT_TRUE(pumpFor([&] { return shown() == Ids{1, 3}; }));
    manager.deleteIdFromGroup(1, 100);
    EXPECT_TRUE(pumpFor([&] { return shown() == Ids{3}; })) << "follows the group";
}

TEST_F(KeyList, OrdersTheChosenKeysByDragging) {
    open();
    const auto middleOf = [&](int row) {
        RECT area{};
        ListView_GetItemRect(list(), row, &area, LVIR_BOUNDS);
        return POINT{area.left + 20, (area.top + area.bottom) / 2};
    };
    const auto drag = [&](int from, POINT to, bool cancels) {
        moveMouse(list(), middleOf(from));
        mouseButton(MOUSEEVENTF_LEFTDOWN);
        moveMouse(list(), {to.x, to.y + 3});
        moveMouse(list(), to);
        if (cancels) {
            EXPECT_EQ(GetCapture(), dialog->getHWND());
            pressKey(VK_ESCAPE);
            EXPECT_TRUE(pumpFor([&] { return !GetCapture(); }));
        }
        mouseButton(MOUSEEVENTF_LEFTUP);
        pump();
    };
    const POINT top{middleOf(0).x, middleOf(0).y - 4};
    drag(4, top, false);
    EXPECT_EQ(chosen(), (Ids{3, 4, 1, 5})) << "a key that was not chosen";
    drag(0, middleOf(4), true);
    EXPECT_EQ(chosen(), (Ids{3, 4, 1, 5}));
    EXPECT_TRUE(dialog->isOpen()) << "Escape ends the gesture only";
}

TEST_F(KeyList, ChoosesKeysUnlessTheApplicationRefuses) {
    open();
    select({2, 4});
    EXPECT_EQ(SendMessageA(dialog->control(IDC_KEY_LIST_CHOSEN), BM_GETCHECK, 0, 0),
              BST_INDETERMINATE);
    push(IDC_KEY_LIST_CHOSEN);
    EXPECT_EQ(chosen(), (Ids{4, 1, 5, 2}));
    dialog->allows = 0;
    push(IDC_KEY_LIST_CHOSEN);
    EXPECT_EQ(chosen(), (Ids{4, 1, 5, 2}));
    EXPECT_EQ(shown(), (Ids{4, 1, 5, 2, 3}));
}

TEST_F(KeyList, EditsDescriptionsAndSavesThem) {
    open();
    select({4});
    SetFocus(list());
    DialogScript script;
    script.run([&](HWND) { pressKey(VK_F2); })
        .waitUntil("its dialog", [&](HWND form) { return form != dialog->getHWND(); })
        .run([&](HWND form) {
            EXPECT_FALSE(IsWindowEnabled(dialog->getHWND()));
            setText(form, IDC_KEY_DESCRIPTION, "a|b");
            PostMessageA(form, WM_COMMAND, IDOK, 0);
        })
        .run([&](HWND form) {
            EXPECT_NE(form, dialog->getHWND()) << "the bar is refused";
            setText(form, IDC_KEY_DESCRIPTION, "  First mode ");
            PostMessageA(form, WM_COMMAND, IDOK, 0);
        });
    EXPECT_TRUE(pumpFor([&] { return cell(0, 1) == "First mode"; }));
    EXPECT_NE(folder.read("keys.ini").find("First mode"), std::string::npos);
}

TEST_F(KeyList, ResetsSeveralKeysWhenAsked) {
    manager.setKeyDesc(1, "One");
    manager.setKeyDesc(2, "Two");
    open();
    select({1, 2});
    for (const int answer : {IDNO, IDYES}) {
        DialogScript script;
        script.run([&](HWND box) {
            EXPECT_NE(FindWindowExA(box, nullptr, "Static", "Do you want to reset 2 keys?"),
                      nullptr);
            PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
        });
        push(IDC_KEY_LIST_RESET);
        EXPECT_EQ(cell(1, 1), answer == IDYES ? "Tension \340 vide" : "One");
    }
    EXPECT_NE(folder.read("keys.ini").find("Number of bars"), std::string::npos);
}

TEST_F(KeyList, GivesTokensToTheClipboardAndTheFieldThatHadTheFocus) {
    const HWND field = CreateWindowExA(0, "EDIT", "U=", WS_CHILD | WS_VISIBLE, 10, 10, 200, 20,
                                       owner, nullptr, nullptr, nullptr);
    SetForegroundWindow(owner);
    SetFocus(field);
    SendMessageA(field, EM_SETSEL, 2, 2);
    open();
    select({1, 4});
    SetFocus(list());
    pressKey('C', {VK_CONTROL});
    EXPECT_TRUE(
        pumpFor([] { return toolbox::platform::current().clipboard->text() == "$FREQ$ $VOLT$"; }));
    EXPECT_TRUE(isEnabled(IDC_KEY_LIST_INSERT));
    push(IDC_KEY_LIST_INSERT);
    EXPECT_EQ(textOf(field), "U=$FREQ$ $VOLT$");
    DestroyWindow(field);
    push(IDC_KEY_LIST_INSERT);
    pump();
    EXPECT_FALSE(isEnabled(IDC_KEY_LIST_INSERT));
}

TEST_F(KeyList, FollowsKeysThatChangeAndGo) {
    open();
    select({5, 2});
    manager.setKeyDesc(5, "Weight");
    choose({5});
    EXPECT_TRUE(pumpFor([&] { return cell(0, 1) == "Weight"; }));
    EXPECT_EQ(selected(), (Ids{5, 2}));
    manager.freeUDApp();
    EXPECT_TRUE(pumpFor([&] { return shown().empty(); }));
    EXPECT_FALSE(isEnabled(IDC_KEY_LIST_FORMAT));
    push(IDC_KEY_LIST_FORMAT);
    push(IDC_KEY_LIST_COPY);
}

TEST_F(KeyList, SurvivesItsEndInEveryOperation) {
    const auto end = [&] { dialog.reset(); };
    dialog->inSample = end;
    dialog->open(owner);
    EXPECT_TRUE(pumpFor([&] { return !dialog; })) << "sampleOf";
    const struct {
        std::function<void()> TestKeyList::*operation;
        int button;
    } cases[] = {{&TestKeyList::inChoose, IDC_KEY_LIST_CHOSEN},
                 {&TestKeyList::inEdited, IDC_KEY_LIST_RESET},
                 {&TestKeyList::inFormat, IDC_KEY_LIST_FORMAT}};
    for (const auto& c : cases) {
        dialog = std::make_unique<TestKeyList>(manager);
        open();
        select({4});
        dialog.get()->*c.operation = end;
        push(c.button);
        EXPECT_FALSE(dialog) << c.button;
    }
    dialog = std::make_unique<TestKeyList>(manager);
    open();
    select({4});
    dialog->inChoose = [&] { DestroyWindow(owner); };
    push(IDC_KEY_LIST_CHOSEN);
    EXPECT_FALSE(dialog->isOpen()) << "gone with its owner";
}

TEST_F(KeyList, OfTenThousandAsksForTheValuesOfRowsInSightOnly) {
    manager.freeUDApp();
    for (UINT id = 0; id < 10000; ++id)
        manager.declare<RealFormat>(id + 10, ("KEY_" + std::to_string(id)).c_str(),
                                    "A measured quantity", 10, 2, Right);
    manager.initUDApp();
    manager.asked = 0;
    open();
    EXPECT_GT(manager.asked, 0);
    EXPECT_LT(manager.asked, 100);
}

TEST_F(KeyList, LeavesNothingBehind) {
    expectNoHandlesLeft(200, [&] {
        open();
        select({4});
        push(IDC_KEY_LIST_UP);
        dialog->close(0);
        pump();
    });
}

}  // namespace
