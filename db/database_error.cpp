// SPDX-License-Identifier: MIT

#include "db/database_error.h"

#include <ibase.h>

#include <algorithm>
#include <array>

namespace db {

namespace {

/// A transaction lives as long as its connection: where the server does not know its handle, an answer came
/// garbled, and no later call would fare better.
constexpr std::array lostConnectionCodes{
    isc_network_error, isc_net_read_err, isc_net_write_err,       isc_conn_lost,     isc_lost_db_connection,
    isc_att_shutdown,  isc_shutdown,     isc_net_server_shutdown, isc_bad_db_handle, isc_bad_trans_handle};

} // namespace

DatabaseError::DatabaseError(const QString& message, std::vector<int> codes)
    : base::Error(message), codes_(std::move(codes)) {}

bool DatabaseError::meansLostConnection() const noexcept {
    return std::ranges::find_first_of(codes_, lostConnectionCodes) != codes_.end();
}

} // namespace db
