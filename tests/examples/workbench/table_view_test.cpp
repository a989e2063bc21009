// The result table and the list of keys, with real input.
#include "table/table_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialogs/dialogs.h"
#include "drawing/drawing_view.h"
#include "format_dialogs.h"
#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"
#include "toolbox/platform.h"

using namespace toolbox::testing;

namespace {

std::string clipboard() {
    return toolbox::platform::current().clipboard->text();
}

class TableWindow : public ::testing::Test {
  protected:
    TableWindow() {
        EXPECT_NE(view, nullptr);
        workbench.workbench().keys().selectColumns("NAME SECTION L M");
        workbench.workbench().keysChanged();
        Beam beam;
        beam.name = "A";
        beam.section = "IPE 300";
        beam.uniform = 8;
        first = document().put(beam);
        beam.name = "B";
        beam.section = "unknown";
        second = document().put(beam);
    }

    [[nodiscard]] Document& document() const { return workbench.document(); }
    [[nodiscard]] HWND list() const {
        return FindWindowExA(view->getHWND(), nullptr, WC_LISTVIEWA, nullptr);
    }
    [[nodiscard]] HWND header() const { return ListView_GetHeader(list()); }
    [[nodiscard]] std::string columns() const {
        return workbench.workbench().keys().columnsText().str();
    }
    [[nodiscard]] std::vector<int> selectedRows() const {
        std::vector<int> rows;
        for (int row = -1; (row = ListView_GetNextItem(list(), row, LVNI_SELECTED)) >= 0;)
            rows.push_back(row);
        return rows;
    }
    std::string copied() const {
        toolbox::platform::current().clipboard->setText("");
        workbench.command(CMD_COPY);
        return clipboard();
    }
    [[nodiscard]] POINT onHeading(int column) const {
        RECT area{};
        Header_GetItemRect(header(), column, &area);
        return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    }
    void clickHeading(int column) const {
        moveMouse(header(), onHeading(column));
        click();
    }
    void clickRow(int row) const {
        RECT area{};
        ListView_GetItemRect(list(), row, &area, LVIR_BOUNDS);
        moveMouse(list(), {area.left + 20, (area.top + area.bottom) / 2});
        click();
    }
    static void click() {
        mouseButton(MOUSEEVENTF_LEFTDOWN);
        mouseButton(MOUSEEVENTF_LEFTUP);
    }
    /// Changes the decimals in the format dialog that is about to open.
    static void enterDecimals(DialogScript& script, const char* decimals) {
        script.run([=](HWND dialog) { setText(dialog, IDC_FORMAT_DECIMALS, decimals); })
            .run([](HWND) { pressKey(VK_RETURN); });
    }

    OpenWorkbench workbench;
    TableView* view = workbench.maximized<TableView>(CMD_TABLE);
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

TEST_F(TableWindow, CopiesWhatItShowsUnderTheFormatsOfTheKeys) {
    EXPECT_EQ(copied(),
              "beam\tsection\tL [m]\tM [kNm]\r\nA\tIPE 300\t6.00\t37.86\r\nB\tunknown\t\t\r\n");
    clickHeading(3);
    DialogScript script;
    enterDecimals(script, "3");
    workbench.command(CMD_FORMAT);
    EXPECT_EQ(copied(),
              "beam\tsection\tL [m]\tM [kNm]\r\nA\tIPE 300\t6.00\t37.863\r\nB\tunknown\t\t\r\n");

    clickRow(0);
    EXPECT_TRUE(pumpUntil([&] { return document().selection().kind == Selection::OneBeam; }));
    EXPECT_EQ(copied(), "beam\tsection\tL [m]\tM [kNm]\r\nA\tIPE 300\t6.00\t37.863\r\n");
}

TEST_F(TableWindow, CopiesFromTheDrawingToo) {
    const std::string shown = copied();
    workbench.command(CMD_DRAWING);
    EXPECT_EQ(copied(), shown);
    EXPECT_EQ(viewOf<DrawingView>(document())->getHWND(),
              workbench.workbench().frame().getActiveMDIChild());
    view->destroy();
    EXPECT_EQ(copied(), shown) << "it opens the table again";
}

TEST_F(TableWindow, SelectsWithTheDocumentBothWays) {
    document().select({Selection::OneBeam, second});
    EXPECT_EQ(selectedRows(), std::vector{1});
    document().select({Selection::OneLoad, first, 0});
    EXPECT_EQ(selectedRows(), std::vector{0});
    pumpMessages();
    EXPECT_TRUE(document().selection() == (Selection{Selection::OneLoad, first, 0}));

    clickRow(1);
    EXPECT_TRUE(pumpUntil([&] { return document().selection().id == second; }));
    clickRow(0);
    EXPECT_TRUE(pumpUntil([&] { return document().selection().id == first; }));
    workbench.command(CMD_DELETE);
    EXPECT_EQ(ListView_GetItemCount(list()), 1);
    EXPECT_TRUE(selectedRows().empty());
}

TEST_F(TableWindow, ALabelAndRowsAreNotSelectedAtOnce) {
    const Label label{.beam = first, .text = "$L$"};
    const Selection labelSelected{Selection::OneLabel, document().put(label)};
    document().select(labelSelected);
    pressKey('A', {VK_CONTROL});
    EXPECT_TRUE(pumpUntil([&] { return document().selection().kind == Selection::Nothing; }));
    EXPECT_EQ(selectedRows(), (std::vector{0, 1}));
    document().select(labelSelected);
    EXPECT_TRUE(selectedRows().empty());
    pumpMessages();
    EXPECT_TRUE(document().selection() == labelSelected);
}

TEST_F(TableWindow, ColumnsAreDraggedIntoAnotherOrder) {
    const POINT to = onHeading(2);
    moveMouse(header(), onHeading(0));
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    moveMouse(header(), onHeading(1));
    moveMouse(header(), {to.x + 10, to.y});
    mouseButton(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(pumpUntil([&] { return columns() == "SECTION L NAME M"; })) << columns();
    // A number keeps its side in the first column, too.
    workbench.workbench().keys().selectColumns("M NAME");
    workbench.workbench().keysChanged();
    LVCOLUMNA column{};
    column.mask = LVCF_FMT;
    SendMessageA(list(), LVM_GETCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
}

TEST_F(TableWindow, TheListOfKeysChangesTheColumns) {
    workbench.command(CMD_KEY_LIST);
    const HWND dialog = FindWindowA("#32770", "Keys");
    ASSERT_NE(dialog, nullptr);
    const HWND keys = GetDlgItem(dialog, IDC_KEYS);
    const auto line = [&](int row, int column) {
        char text[80] = "";
        ListView_GetItemText(keys, row, column, text, sizeof text);
        return std::string(text);
    };
    const auto press = [&](int button) { SendDlgItemMessageA(dialog, button, BM_CLICK, 0, 0); };
    const auto select = [&](int row) {
        ListView_SetItemState(keys, row, LVIS_SELECTED, LVIS_SELECTED);
    };
    EXPECT_EQ(line(2, 0) + line(2, 2) + line(2, 4), "LL [m]3");
    select(2);
    press(IDC_KEY_UP);
    press(IDC_KEY_UP);
    EXPECT_EQ(columns(), "L NAME SECTION M");
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_KEY_UP)));
    press(IDC_KEY_SHOWN);
    EXPECT_EQ(columns(), "NAME SECTION M");
    EXPECT_EQ(line(3, 0) + line(3, 4), "L") << "the first of those that are no columns";
    press(IDC_KEY_COPY);
    EXPECT_EQ(clipboard(), "$L$");
    press(IDC_KEY_SHOWN);
    EXPECT_EQ(columns(), "NAME SECTION M L");

    DialogScript script;
    enterDecimals(script, "0");
    press(IDC_KEY_FORMAT);
    EXPECT_EQ(line(3, 3), "1235");
    EXPECT_EQ(copied().substr(28, 19), "A\tIPE 300\t37.86\t6\r\n");
    press(IDC_KEY_RESET);
    EXPECT_EQ(line(3, 3), "1234.6");

    workbench.workbench().keys().selectColumns("M");
    workbench.workbench().keysChanged();
    select(0);
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_KEY_SHOWN))) << "the last column";
    SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(IsWindow(dialog));
}

}  // namespace
