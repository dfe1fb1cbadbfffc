#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "jet/format.h"
#include "jet/page.h"

namespace tolva::jet {

/// Reads and changes whole pages of one file, and makes changes durable all together or not at all, with a
/// rollback journal beside the file. Nothing else writes to an .mdb.
class Pager {
  public:
    virtual ~Pager() = default;

    virtual const Format& format() const = 0;
    /// The file's path, for messages.
    virtual const std::string& path() const = 0;
    virtual PageNumber page_count() const = 0;

    /// The page with all pending changes. Error 3049 beyond the file's end.
    virtual PageRef read(PageNumber page) const = 0;

    /// The page's bytes for changing; good until the next call of `modify`, `append`, `commit` or an undo.
    virtual std::span<std::uint8_t> modify(PageNumber page) = 0;

    /// A new page of zeros at the file's end.
    virtual PageNumber append() = 0;

    /// Brackets one change of a table: `undo_statement` puts back everything since `begin_statement`.
    virtual void begin_statement() = 0;
    virtual void end_statement() = 0;
    virtual void undo_statement() = 0;

    /// Whether there is something that a power cut would take: changes that are pending, or a commit whose
    /// last step failed.
    virtual bool dirty() const = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
};

} // namespace tolva::jet
