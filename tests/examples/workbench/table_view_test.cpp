// The result table and the list of keys, with real input.
#include "table/table_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "format_dialogs.h"
#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"
#include "toolbox/platform.h"

using namespace toolbox::testing;

namespace {

class TableWindow : public ::testing::Test {
  protected:
    TableWindow() {
        EXPECT_NE(view, nullptr);
        workbench.workbench().keys().selectColumns("NAME SECTION L M");
        workbench.workbench().keysChanged();
        Beam beam{.name = "A", .section = "IPE 300", .uniform = 8, .loads = {}};
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
        return toolbox::platform::current().clipboard->text();
    }
    [[nodiscard]] POINT onHeading(int column) const {
        RECT area{};
        Header_GetItemRect(header(), column, &area);
        return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
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

    OpenWorkbench workbench;
    TableView* view = workbench.maximized<TableView>(CMD_TABLE);
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

TEST_F(TableWindow, CopiesWhatItShowsUnderTheFormatsOfTheKeys) {
    EXPECT_EQ(copied(),
              "beam\tsection\tL [m]\tM [kNm]\r\nA\tIPE 300\t6.00\t37.86\r\nB\tunknown\t\t\r\n");
    moveMouse(header(), onHeading(3));
    click();
    DialogScript script;
    script.run([=](HWND dialog) { setText(dialog, IDC_FORMAT_DECIMALS, "3"); }).run([](HWND) {
        pressKey(VK_RETURN);
    });
    workbench.command(CMD_FORMAT);
    clickRow(0);
    EXPECT_TRUE(pumpUntil([&] { return document().selection().kind == Selection::OneBeam; }));
    EXPECT_EQ(copied(), "beam\tsection\tL [m]\tM [kNm]\r\nA\tIPE 300\t6.00\t37.863\r\n");
    view->destroy();
    EXPECT_EQ(copied().substr(28, 21), "A\tIPE 300\t6.00\t37.863") << "it opens the table again";
}

TEST_F(TableWindow, SelectsWithTheDocumentBothWays) {
    document().select({Selection::OneBeam, second});
    EXPECT_EQ(selectedRows(), std::vector{1});
    document().select({Selection::OneLoad, first, 0});
    EXPECT_EQ(selectedRows(), std::vector{0});
    pumpMessages();
    EXPECT_TRUE(document().selection() == (Selection{Selection::OneLoad, first, 0}));

    document().select({Selection::OneBeam, second});
    clickRow(0);
    EXPECT_TRUE(pumpUntil([&] { return document().selection().id == first; }));
    workbench.command(CMD_DELETE);
    EXPECT_EQ(ListView_GetItemCount(list()), 1);
    EXPECT_TRUE(selectedRows().empty());
}

}  // namespace
