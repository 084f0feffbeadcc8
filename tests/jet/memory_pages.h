#pragma once

#include <memory>
#include <string>

#include "jet/data_page.h"
#include "jet/page_file.h"
#include "tests/support/faulty_files.h"

namespace jet_test {

/// A file of empty pages in memory, for tests of what stands on pages.
class MemoryPages {
  public:
    explicit MemoryPages(const jet::Format& format, std::uint32_t count = 3) {
        files.write(name, std::string(std::size_t{count} * format.pageSize, '\0'));
        pages = std::make_unique<jet::PageFile>(
            files.open(name, base::FileOpener::Mode::ReadWrite).file, format, name, 1u << 20);
    }
    MemoryPages(const jet::Format& format, const std::string& content) {
        files.write(name, content);
        pages = std::make_unique<jet::PageFile>(
            files.open(name, base::FileOpener::Mode::ReadWrite).file, format, name, 1u << 20);
    }

    /// Makes `page` a data page with that one row.
    jet::RowPointer putRow(std::uint32_t page, const std::string& row) {
        const jet::PageHandle handle = pages->create(page);
        jet::DataPage view(pages->format(), *handle);
        view.initialise(0);
        const std::uint32_t slot = view.insert(jet::asBytes(row));
        pages->changed(*handle);
        return {page, static_cast<std::uint8_t>(slot)};
    }

    static constexpr const char* name = "pages";
    support::FaultyFiles files;
    std::unique_ptr<jet::PageFile> pages;
};

}  // namespace jet_test
