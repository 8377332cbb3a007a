// SPDX-License-Identifier: MIT

#include "data/data_modul.h"

#include "data/catalog_fields.h"
#include "data/catalog_queries.h"

#include <algorithm>
#include <variant>

TDM* DM = nullptr;

namespace {

using data::QueryRows;
using enum QueryRows;
using Tables = data::Edition::Tables;
namespace fields = data::fields;

/// The same in all editions.
constexpr QStringView transportTable = u"FER20KATALOGPEREVOZKA_TABLE";

/// A catalog dataset and what its query reads.
struct DataSetSpec {
    int number; ///< ends the object name
    db::DataSet TDM::*dataSet;
    std::span<const db::FieldSpec> fields;
    /// Fixed, or one of the edition's.
    std::variant<QStringView, QStringView Tables::*> table;
    QueryRows rows;

    [[nodiscard]] bool isOfEdition() const { return table.index() == 1; }

    [[nodiscard]] QStringView tableOf(const data::Edition& edition) const {
        return isOfEdition() ? edition.tables.*std::get<1>(table) : std::get<0>(table);
    }
};

constexpr DataSetSpec dataSetSpecs[]{
    {1, &TDM::pFIBDataSet1, fields::regions, u"REGION", ByName},
    {2, &TDM::pFIBDataSet2, fields::periods, u"PERIOD_TABLE", ByPeriod},
    {3, &TDM::pFIBDataSet3, fields::materials, &Tables::materials, OfSelection},
    {4, &TDM::pFIBDataSet4, fields::contents, &Tables::contents, OfSelection},
    {5, &TDM::pFIBDataSet5, fields::machines, &Tables::machines, OfSelection},
    {6, &TDM::pFIBDataSet6, fields::labour, &Tables::labour, OfSelection},
    {7, &TDM::pFIBDataSet7, fields::firms, u"FIRMS", Whole},
    {8, &TDM::pFIBDataSet8, fields::coefficients, u"OGRANICHENIE", Whole},
    {9, &TDM::pFIBDataSet9, fields::catalogTree, u"KATALOG", Whole},
    {10, &TDM::pFIBDataSet10, fields::transport, transportTable, OfSelection},
};

/// The datasets whose rows of the table fulfil a condition, in the table's order.
template <typename Condition>
std::vector<db::DataSet*> dataSetsWhere(TDM& module, Condition condition) {
    std::vector<db::DataSet*> found;
    for (const DataSetSpec& spec : dataSetSpecs) {
        if (condition(spec)) {
            found.push_back(&(module.*spec.dataSet));
        }
    }
    return found;
}

} // namespace

TDM::TDM(QObject* parent)
    : QObject(parent),
      pFIBDatabase1(QStringLiteral("pFIBDatabase1"), databaseNameOn(QString::fromLatin1(localServer)),
                    connectionParameters(), db::ClientLibrary::defaultNames(), this),
      RFIBTransaction(QStringLiteral("RFIBTransaction"),
                      {QStringLiteral("read"), QStringLiteral("nowait"), QStringLiteral("rec_version"),
                       QStringLiteral("read_committed")},
                      pFIBDatabase1, this) {
    setObjectName(QStringLiteral("DM"));
}

TDM::~TDM() {
    if (DM == this) {
        DM = nullptr;
    }
}

db::DataSet TDM::makeDataSet(db::DataSet TDM::*member) {
    const DataSetSpec& spec = *std::ranges::find(dataSetSpecs, member, &DataSetSpec::dataSet);
    return db::DataSet(QStringLiteral("pFIBDataSet%1").arg(spec.number), spec.fields,
                       data::initialQuery(spec.fields, spec.tableOf(data::initialEdition), spec.rows),
                       pFIBDatabase1, RFIBTransaction, this);
}

std::vector<db::DataSet*> TDM::dataSets() {
    return dataSetsWhere(*this, [](const DataSetSpec&) { return true; });
}

std::vector<db::DataSet*> TDM::selectionDataSets() {
    return dataSetsWhere(*this, [](const DataSetSpec& spec) { return spec.rows == OfSelection; });
}

std::vector<db::DataSet*> TDM::wholeDataSets() {
    return dataSetsWhere(*this, [](const DataSetSpec& spec) { return spec.rows == Whole; });
}

void TDM::connectTo(const QString& server) {
    pFIBDatabase1.setDatabaseName(databaseNameOn(server));
    pFIBDatabase1.open();
}

void TDM::chooseEdition(const data::Edition& edition) {
    for (const DataSetSpec& spec : dataSetSpecs) {
        if (spec.isOfEdition()) {
            db::DataSet& dataSet = this->*spec.dataSet;
            dataSet.close();
            dataSet.setSql(data::editionQuery(spec.fields, spec.tableOf(edition)));
            dataSet.prepare();
        }
    }
}

void TDM::releaseQueries() {
    try {
        for (db::DataSet* dataSet : dataSets()) {
            dataSet->releaseHandles();
        }
    } catch (const db::DatabaseError& error) {
        if (!error.meansLostConnection()) {
            throw;
        }
    }
}

QString TDM::databaseNameOn(const QString& server) {
    return server + QStringLiteral("/3050:C:\\DATA\\BAZAKATALOG.FDB");
}

QStringList TDM::connectionParameters() {
    return {QStringLiteral("password=") + QString::fromLatin1(password),
            QStringLiteral("user_name=") + QString::fromLatin1(userName), QStringLiteral("lc_ctype=WIN1251")};
}
