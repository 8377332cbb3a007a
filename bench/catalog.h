// SPDX-License-Identifier: MIT

#pragma once

#include "data/data_modul.h"

#include <string_view>

namespace bench {

/// A period and a region of the measuring catalog.
struct Stretch {
    const char* period;
    std::int32_t region;
    int materials;
};

/// Regions 1 to `regionCount` have the same rows in `regionPeriod`: 60,000 materials, 3,000 contents, 4,000
/// machines, 600 labour and 6,000 transport rows.
inline constexpr auto regionPeriod = "202412";
inline constexpr int regionCount = 4;

inline constexpr Stretch thousand{"202403", 2, 1'000};
inline constexpr Stretch threeHundredThousand{"202403", 1, 300'000};
inline constexpr Stretch million{"202403", 4, 1'000'000};

/// The name under which the selector lists a region.
[[nodiscard]] QString regionName(std::int32_t region);

/// Binds and opens the materials of a stretch. Throws std::runtime_error when the catalog holds another
/// number of rows.
void openMaterials(TDM& module, const Stretch& stretch);

/// A dataset's query, run by the client library alone: the rows are fetched and forgotten.
class BareQuery final {
public:
    /// Prepares the query on the connection and in the transaction of the data module.
    BareQuery(TDM& module, const db::DataSet& dataSet);

    /// Fetches the rows of a period and a region; returns their number.
    int read(const QString& period, std::int32_t region);
    /// Milliseconds until the first row of a period and a region has come; the others are not fetched.
    double timeUntilFirstRow(const QString& period, std::int32_t region);
    /// Fetches the rows of a query without parameters; returns their number.
    int read();

private:
    void bind(const QString& period, std::int32_t region);
    [[nodiscard]] db::Handle<Firebird::IResultSet> openCursor();

    TDM& module_;
    db::Handle<Firebird::IStatement> statement_;
    db::Handle<Firebird::IMessageMetadata> inputMetadata_;
    std::vector<unsigned char> input_;
    std::vector<unsigned char> message_;
};

} // namespace bench
