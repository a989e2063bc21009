// The list of keys as a user sees it and works in it.
#include "key_list_fixture.h"

namespace {

TEST_F(KeyList, ShowsEveryKeyWithItsSample) {
    struct Case {
        GMSG::Language language;
        const char *caption, *heading, *group, *text;
    };
    const Case cases[] = {
        {GMSG::English, "Keys", "Header", "All keys", "Sample text"},
        {GMSG::French, "Cl\351s", "En-t\352te", "Toutes les cl\351s", "Exemple de texte"}};
    for (const Case& c : cases) {
        GMSG::language = c.language;
        open();
        EXPECT_EQ(textOf(dialog->getHWND()), c.caption);
        EXPECT_EQ(textOf(dialog->control(IDC_KEY_LIST_GROUP)), c.group);
        char heading[40] = "";
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT;
        column.pszText = heading;
        column.cchTextMax = sizeof heading;
        SendMessageA(list(), LVM_GETCOLUMNA, 2, reinterpret_cast<LPARAM>(&column));
        EXPECT_STREQ(heading, c.heading);
        EXPECT_EQ(shown(), (Ids{4, 1, 5, 2, 3}));
        EXPECT_EQ(line(0), "FREQ|Frequency|H4|mm|10.0|1|");
        EXPECT_EQ(line(1), "VOLT|Tension \340 vide|H1|u1|2.50|2|");
        EXPECT_EQ(line(3), "COUNT|Number of bars|H2|mm|1234||");
        EXPECT_EQ(line(4), std::string("NAME|Name|H3|mm|") + c.text + "||");
        dialog->close(0);
    }
}

TEST_F(KeyList, IsFilteredWhileTheUserTypes) {
    open();
    EXPECT_EQ(focusedControl(), IDC_KEY_LIST_FILTER);
    select({5, 4});
    typeText("e");
    EXPECT_TRUE(pumpFor([&] { return shown() == Ids{4, 1, 2, 3}; }));
    typeText(" num");
    EXPECT_TRUE(pumpFor([&] { return shown() == Ids{2}; }));
    EXPECT_EQ(selected(), Ids());
    pressKey(VK_RETURN);
    EXPECT_TRUE(pumpFor([&] { return GetFocus() == list(); }));
    EXPECT_EQ(selected(), Ids{2});
    dialog->setFilter("frequency");
    EXPECT_EQ(shown(), Ids{4});
    dialog->setFilter("");
    EXPECT_EQ(selected(), Ids{2});
    EXPECT_EQ(line(3), "COUNT|Number of bars|H2|mm|1234||");
}

TEST_F(KeyList, ShowsOneGroup) {
    manager.addIdToGroup(3, 100);
    manager.addIdToGroup(1, 100);
    dialog->addGroup(100, "Labels");
    open();
    const HWND box = dialog->control(IDC_KEY_LIST_GROUP);
    SetFocus(box);
    pressKey(VK_DOWN);
    EXPECT_TRUE(pumpFor([&] { return shown() == Ids{1, 3}; }));
    EXPECT_EQ(dialog->getShownGroup(), 100u);
    manager.deleteIdFromGroup(1, 100);
    EXPECT_TRUE(pumpFor([&] { return shown() == Ids{3}; })) << "follows the group";
    EXPECT_EQ(dialog->showGroup(77), 0);
    EXPECT_EQ(dialog->showGroup(TvKeyListDialog::kAllKeys), 1);
    EXPECT_EQ(shown().size(), 5u);
}

TEST_F(KeyList, OrdersTheChosenKeysByTheKeyboard) {
    open();
    SetFocus(list());
    select({1});
    pressKey(VK_UP, {VK_MENU});
    EXPECT_TRUE(pumpFor([&] { return chosen() == Ids{1, 4, 5}; }));
    EXPECT_EQ(selected(), Ids{1});
    EXPECT_EQ(cell(0, 5), "1");
    pressKey(VK_DOWN, {VK_MENU});
    pressKey(VK_DOWN, {VK_MENU});
    EXPECT_TRUE(pumpFor([&] { return chosen() == Ids{4, 5, 1}; }));
    pump();
    EXPECT_FALSE(isEnabled(IDC_KEY_LIST_DOWN));
    EXPECT_TRUE(isEnabled(IDC_KEY_LIST_UP));
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
    drag(2, top, false);
    EXPECT_EQ(chosen(), (Ids{5, 4, 1}));
    EXPECT_EQ(selected(), Ids{5});
    drag(4, top, false);
    EXPECT_EQ(chosen(), (Ids{3, 5, 4, 1})) << "a key that was not chosen";
    drag(0, middleOf(4), true);
    EXPECT_EQ(chosen(), (Ids{3, 5, 4, 1}));
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
    dialog->allows = 1;
    SetFocus(list());
    pressKey('A', {VK_CONTROL});
    EXPECT_TRUE(pumpFor([&] { return selected().size() == 5; }));
    push(IDC_KEY_LIST_CHOSEN);
    push(IDC_KEY_LIST_CHOSEN);
    EXPECT_EQ(chosen(), Ids()) << "first all, then none";
}

TEST_F(KeyList, EditsFormatAndDescriptionAndSavesThem) {
    open();
    select({4});
    SetFocus(list());
    {
        DialogScript script;
        script.run([&](HWND) { pressKey(VK_F2); })
            .waitUntil("its dialog",
                       [&](HWND form) { return GetDlgItem(form, IDC_KEY_DESCRIPTION); })
            .run([&](HWND form) {
                EXPECT_EQ(textOf(form), "Description - FREQ");
                EXPECT_FALSE(IsWindowEnabled(dialog->getHWND()));
                setText(form, IDC_KEY_DESCRIPTION, "a|b");
                PostMessageA(form, WM_COMMAND, IDOK, 0);
            })
            .run([&](HWND form) {
                EXPECT_NE(form, dialog->getHWND()) << "the bar is refused";
                setText(form, IDC_KEY_DESCRIPTION, "  First mode ");
                PostMessageA(form, WM_COMMAND, IDOK, 0);
            })
            .waitUntil("its end", [&](HWND form) { return form == dialog->getHWND(); });
        EXPECT_TRUE(pumpFor([&] { return cell(0, 1) == "First mode"; }));
    }
    bool done = false;
    DialogScript script;
    script.run([&](HWND) { pressKey(VK_RETURN); })
        .waitUntil("the format's dialog", [&](HWND form) { return form != dialog->getHWND(); })
        .run([&](HWND form) {
            EXPECT_EQ(textOf(form), "Format of a real - FREQ");
            EXPECT_FALSE(IsWindowEnabled(owner));
            PostMessageA(form, WM_COMMAND, IDOK, 0);
            done = true;
        });
    EXPECT_TRUE(pumpFor([&] { return done && IsWindowEnabled(owner); }));
    EXPECT_NE(folder.read("keys.ini").find("First mode"), std::string::npos);
    EXPECT_EQ(GetActiveWindow(), dialog->getHWND());
}

TEST_F(KeyList, ResetsSeveralKeysWhenAsked) {
    manager.setKeyDesc(1, "One");
    manager.setKeyDesc(2, "Two");
    open();
    select({1, 2});
    for (const int answer : {IDNO, IDYES}) {
        bool done = false;
        DialogScript script;
        script
            .run([&](HWND) { PostMessageA(dialog->getHWND(), WM_COMMAND, IDC_KEY_LIST_RESET, 0); })
            .waitUntil("the question", [&](HWND box) { return box != dialog->getHWND(); })
            .run([&](HWND box) {
                done = true;
                EXPECT_NE(FindWindowExA(box, nullptr, "Static", "Do you want to reset 2 keys?"),
                          nullptr);
                PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
            });
        EXPECT_TRUE(pumpFor([&] { return done && openDialogs().size() == 1; }));
        EXPECT_EQ(cell(1, 1), answer == IDYES ? "Tension \340 vide" : "One");
    }
    EXPECT_NE(folder.read("keys.ini").find("Number of bars"), std::string::npos);
}

TEST_F(KeyList, GivesTokensToTheClipboardAndTheFieldThatHadTheFocus) {
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
    RealFormat format;
    format.setFormat(8, 1, Right);
    manager.setKeyFormat(5, format);
    choose({5});
    EXPECT_TRUE(pumpFor([&] { return cell(0, 1) == "Weight" && cell(0, 4) == "12.5"; }));
    EXPECT_EQ(selected(), (Ids{5, 2}));
    manager.freeUDApp();
    EXPECT_TRUE(pumpFor([&] { return shown().empty(); }));
    EXPECT_FALSE(isEnabled(IDC_KEY_LIST_FORMAT));
    push(IDC_KEY_LIST_FORMAT);
    push(IDC_KEY_LIST_COPY);
}

TEST_F(KeyList, RunsModalAndKnowsItsSelectionAfterwards) {
    DialogScript script;
    script.run([&](HWND window) {
        select({2});
        PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(dialog->run(owner), 0);
    EXPECT_EQ(dialog->wasMade(), 1);
    EXPECT_EQ(selected(), Ids{2});
    EXPECT_EQ(shown().size(), 5u);
}

TEST_F(KeyList, SurvivesItsEndInEveryOperation) {
    const auto end = [&] { dialog.reset(); };
    const auto anew = [&] {
        dialog = std::make_unique<TestKeyList>(manager);
        open();
        select({4});
    };
    dialog->inSample = end;
    dialog->open(owner);
    EXPECT_TRUE(pumpFor([&] { return !dialog; })) << "sampleOf";
    anew();
    dialog->inChoose = end;
    push(IDC_KEY_LIST_CHOSEN);
    EXPECT_FALSE(dialog);
    anew();
    dialog->inEdited = end;
    push(IDC_KEY_LIST_RESET);
    EXPECT_FALSE(dialog);
    anew();
    dialog->inFormat = end;
    push(IDC_KEY_LIST_FORMAT);
    EXPECT_FALSE(dialog);
    anew();
    dialog->inChoose = [&] { DestroyWindow(owner); };
    push(IDC_KEY_LIST_CHOSEN);
    EXPECT_FALSE(dialog->isOpen()) << "gone with its owner";
}

}  // namespace
