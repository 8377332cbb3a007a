// SPDX-License-Identifier: MIT

#pragma once

#include "data/catalog_editions.h"
#include "db/connection.h"
#include "db/data_set.h"
#include "db/data_source.h"
#include "db/transaction.h"

#include <QObject>
#include <QString>

#include <vector>

/// The data module: the one connection, its one transaction, the ten catalog datasets and what the views bind
/// to. Created disconnected; lives as long as the program.
class TDM final : public QObject {
    Q_OBJECT

public:
    explicit TDM(QObject* parent = nullptr);
    ~TDM() override;

    db::Connection pFIBDatabase1;
    db::Transaction RFIBTransaction;

    db::DataSet pFIBDataSet1 = makeDataSet(&TDM::pFIBDataSet1); ///< regions
    db::DataSet pFIBDataSet2 = makeDataSet(&TDM::pFIBDataSet2); ///< periods
    db::DataSet pFIBDataSet3 = makeDataSet(&TDM::pFIBDataSet3); ///< materials of an edition
    db::DataSet pFIBDataSet4 = makeDataSet(&TDM::pFIBDataSet4); ///< table of contents of the materials
    db::DataSet pFIBDataSet5 = makeDataSet(&TDM::pFIBDataSet5); ///< machines of an edition
    db::DataSet pFIBDataSet6 = makeDataSet(&TDM::pFIBDataSet6); ///< labour of an edition
    db::DataSet pFIBDataSet7 = makeDataSet(&TDM::pFIBDataSet7); ///< firms
    db::DataSet pFIBDataSet8 = makeDataSet(&TDM::pFIBDataSet8); ///< regional coefficients
    db::DataSet pFIBDataSet9 = makeDataSet(&TDM::pFIBDataSet9); ///< catalog tree
    db::DataSet pFIBDataSet10 =
        makeDataSet(&TDM::pFIBDataSet10); ///< transport catalog, the same in all editions

    db::DataSource DataSource1{QStringLiteral("DataSource1"), pFIBDataSet1, this};
    db::DataSource DataSource3{QStringLiteral("DataSource3"), pFIBDataSet3, this};
    db::DataSource DataSource4{QStringLiteral("DataSource4"), pFIBDataSet4, this};
    db::DataSource DataSource5{QStringLiteral("DataSource5"), pFIBDataSet5, this};
    db::DataSource DataSource6{QStringLiteral("DataSource6"), pFIBDataSet6, this};
    db::DataSource DataSource7{QStringLiteral("DataSource7"), pFIBDataSet7, this};
    db::DataSource DataSource8{QStringLiteral("DataSource8"), pFIBDataSet8, this};
    db::DataSource DataSource9{QStringLiteral("DataSource9"), pFIBDataSet9, this};
    db::DataSource DataSource10{QStringLiteral("DataSource10"), pFIBDataSet10, this};

    /// pFIBDataSet1 to pFIBDataSet10.
    [[nodiscard]] std::vector<db::DataSet*> dataSets();

    /// The datasets bound to a period and a region, in the order in which they are read:
    /// pFIBDataSet3 to pFIBDataSet6, pFIBDataSet10.
    [[nodiscard]] std::vector<db::DataSet*> selectionDataSets();

    /// The datasets that show a whole table, in the order in which they are read: pFIBDataSet7 to
    /// pFIBDataSet9.
    [[nodiscard]] std::vector<db::DataSet*> wholeDataSets();

    /// Points the connection at the catalog on a server and opens it; changes nothing when it is open there.
    /// Throws db::DatabaseError, also when it is open elsewhere.
    void connectTo(const QString& server);

    /// Closes pFIBDataSet3 to pFIBDataSet6, gives them the queries of the edition and prepares them, one
    /// after the other. Throws db::DatabaseError; the datasets done so far then keep the new queries.
    void chooseEdition(const data::Edition& edition);

    /// Frees the compiled queries of all datasets, which would keep other clients from altering the tables as
    /// long as the program stays connected. Throws db::DatabaseError, but not when the connection is lost,
    /// and they with it.
    void releaseQueries();

    /// The connection string of the catalog on a server: `server` as the user typed it, port and path.
    [[nodiscard]] static QString databaseNameOn(const QString& server);

    static constexpr auto userName = "SYSDBA";
    static constexpr auto password = "pinewoods";

    /// The lines with which the program logs in: password, user name, character set.
    [[nodiscard]] static QStringList connectionParameters();

private:
    /// The dataset that is to be that member.
    [[nodiscard]] db::DataSet makeDataSet(db::DataSet TDM::*member);
};

/// The address that is offered to the user: the local machine.
inline constexpr auto localServer = "127.0.0.1";

/// The data module of the running program.
extern TDM* DM;
