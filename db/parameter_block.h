// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

#include <vector>

namespace db {

/// Bytes of a Firebird parameter block.
using ParameterBlock = std::vector<unsigned char>;

/// The database parameter block for lines such as "user_name=SYSDBA": isc_dpb_version1, then for each line
/// its item code, a length byte and the text. Known names: password, user_name, lc_ctype (ibase.h:
/// isc_dpb_...). Throws DatabaseError for an unknown name or a text of more than 255 bytes.
[[nodiscard]] ParameterBlock databaseParameterBlock(const QStringList& lines);

/// The transaction parameter block for the words read, nowait, rec_version, read_committed: isc_tpb_version3,
/// then one code a word. Throws DatabaseError for an unknown word.
[[nodiscard]] ParameterBlock transactionParameterBlock(const QStringList& words);

} // namespace db
