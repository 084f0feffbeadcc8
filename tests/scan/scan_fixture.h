#pragma once

#include <functional>
#include <string>
#include <vector>

#include "scan/desktop_scan.h"
#include "tests/archive/archive_fixture.h"
#include "tests/support/fake_platform.h"

namespace support {

/// The main window of a scan in a test: keeps what it is told to show, and in which order.
class FakeMainDisplay : public scan::MainDisplay {
  public:
    void arrangeScanMain() override { calls.emplace_back("arrange"); }
    void setListColumns(const std::vector<scan::ListColumn>& newColumns) override {
        calls.emplace_back("columns");
        columns = newColumns;
    }
    void removeAllItems() override {
        calls.emplace_back("remove items");
        items.clear();
    }
    void addItems(std::vector<scan::ListItem> newItems) override {
        calls.emplace_back("add items");
        items.insert(items.end(), newItems.begin(), newItems.end());
    }
    void setDisplayDriveInfo(int index, const std::string& text) override {
        calls.push_back("status " + std::to_string(index));
        status[static_cast<std::size_t>(index)] = text;
    }
    void enableSave() override { calls.emplace_back("enable save"); }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const scan::ListItem& item : items) {
            result.push_back(item.at(0));
        }
        return result;
    }

    std::vector<std::string> calls;
    std::vector<scan::ListColumn> columns;
    std::vector<scan::ListItem> items;
    std::array<std::string, 2> status;
};

/// An archive whose next medium is number 12, and a machine with the drives c (1,234 Mb) and d, a
/// disc with some files.
class ScanFixture : public ArchiveTest {
  protected:
    static constexpr std::uint64_t mb = 1048576;

    ScanFixture() {
        std::vector<base::MediaInfo> media(1);
        media[0].mediaId = 11;
        tables.addMedia(state.currentArchive(), media);
        FakeDrive& disc = machine.machineDrives.add('d', "HOLIDAY", 4);
        disc.totalBytes = 650 * mb;
        disc.totalFree = 138 * mb;
        FakeDrive& fixed = machine.machineDrives.add('c', "SYSTEM", 2);
        fixed.totalBytes = 1234 * mb;
        fixed.totalFree = 234 * mb;
        machine.disk.addFolder("c:\\");
        machine.disk.addFolder("d:\\a");
        FakeEntry& file = machine.disk.addFile("d:\\f.txt", 1234);
        file.created = timeOf(2001, 3, 7, 9, 5, 0);
        file.lastWrite = timeOf(2002, 4, 8, 10, 6, 1);
        file.typeName = "Text";
        machine.disk.addFile("d:\\a\\g.txt", 5);
    }

    FakePlatform machine;
    FakeMainDisplay main;
    scan::DesktopScan scan{state, engine, machine, events, main};
};

}  // namespace support
