#include "jet/connection.h"

#include <array>
#include <chrono>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "jet/database_file.h"
#include "jet/engine.h"
#include "jet/recordset.h"

namespace jet {

namespace {

using base::EngineFailure;
using base::EngineFault;

constexpr std::string_view providerName = "Microsoft.Jet.OLEDB.4.0";
constexpr std::array<std::string_view, 6> knownKeys{
    "Provider", "Data Source", "User ID", "Password", "Mode", "Persist Security Info"};

bool beginsKey(std::string_view text) {
    text = base::trimmedBlanks(text);
    for (const std::string_view key : knownKeys) {
        if (text.size() > key.size() && base::equalIgnoringCase(text.substr(0, key.size()), key) &&
            base::trimmedBlanks(text.substr(key.size())).starts_with('=')) {
            return true;
        }
    }
    return false;
}

/// Where the value ends: at a semicolon before a known key or at the end. A path may hold
/// semicolons.
std::size_t endOfValue(std::string_view text, std::size_t from) {
    for (std::size_t at = text.find(';', from); at != std::string_view::npos;
         at = text.find(';', at + 1)) {
        const std::string_view rest = text.substr(at + 1);
        if (base::trimmedBlanks(rest).empty() || beginsKey(rest)) {
            return at;
        }
    }
    return text.size();
}

std::string dataSourceOf(std::string_view text) {
    std::string source;
    std::string provider;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t equals = text.find('=', at);
        if (equals == std::string_view::npos) {
            break;
        }
        const std::string_view key = base::trimmedBlanks(text.substr(at, equals - at));
        const std::size_t end = endOfValue(text, equals + 1);
        std::string_view value = text.substr(equals + 1, end - equals - 1);
        if (base::equalIgnoringCase(key, "Provider")) {
            provider = base::trimmedBlanks(value);
        } else if (base::equalIgnoringCase(key, "Data Source")) {
            if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
                value = value.substr(1, value.size() - 2);
            }
            source = value;
        }
        at = end + 1;
    }
    if (!base::equalIgnoringCase(provider, providerName)) {
        throw EngineFailure(EngineFault::Usage,
                            "the connection text names " +
                                (provider.empty() ? "no provider" : "the provider " + provider) +
                                " where " + std::string(providerName) + " is meant");
    }
    if (source.empty()) {
        throw EngineFailure(EngineFault::Usage, "the connection text names no data source");
    }
    return source;
}

std::int64_t nowMilliseconds() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace

Connection::Connection(Engine& engine) : engine_(engine) {}

Connection::~Connection() {
    try {
        close();
    } catch (const base::Failure&) {
        // What could not be stored is lost; whoever wants to know calls close().
    }
}

void Connection::open(std::string_view connectionText) {
    close();
    file_ = engine_.openFile(dataSourceOf(connectionText));
    file_->addUser();
    rowsSinceFlush_ = 0;
    lastFlushMilliseconds_ = nowMilliseconds();
}

void Connection::flush() {
    if (file_ != nullptr) {
        file_->flush();
        rowsSinceFlush_ = 0;
        lastFlushMilliseconds_ = nowMilliseconds();
    }
}

void Connection::close() {
    for (Recordset* const recordset : std::exchange(recordsets_, {})) {
        recordset->connectionClosed();
    }
    if (const std::shared_ptr<DatabaseFile> file = std::exchange(file_, nullptr)) {
        file->removeUser();
    }
}

void Connection::rowWritten() {
    constexpr std::int64_t rowsBetweenLooks = 64;
    ++rowsSinceFlush_;
    const bool enoughRows = policy_.rows != 0 && rowsSinceFlush_ >= policy_.rows;
    if (enoughRows || (policy_.milliseconds != 0 && rowsSinceFlush_ % rowsBetweenLooks == 0 &&
                       nowMilliseconds() - lastFlushMilliseconds_ >= policy_.milliseconds)) {
        flush();
    }
}

}  // namespace jet
