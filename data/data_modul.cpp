#include "data/data_modul.h"

#include "base/text.h"
#include "data/catalog_fields.h"
#include "data/catalog_queries.h"

#include <algorithm>
#include <variant>

TDM* DM = nullptr;

namespace {

using data::QueryRows;
using Tables = data::Edition::Tables;
namespace fields = data::fields;

/// A component of the data module and its object name; null where there is none.
template <typename Component>
struct Named {
    Component TDM::*member = nullptr;
    const char* name = nullptr;
};

/// What the query of a dataset reads.
struct Query {
    std::span<const db::FieldSpec> fields;
    std::variant<std::u16string_view, std::u16string_view Tables::*>
        table; ///< fixed, or one of the edition's
    QueryRows rows;

    [[nodiscard]] bool isOfEdition() const { return table.index() == 1; }

    [[nodiscard]] std::u16string_view tableOf(const data::Edition& edition) const {
        return isOfEdition() ? edition.tables.*std::get<1>(table) : std::get<0>(table);
    }
};

/// A catalog dataset with the data source through which views show it, if they do.
struct DataSetSpec {
    Named<db::DataSet> dataSet;
    Named<db::DataSource> source;
    Query query;
};

constexpr DataSetSpec dataSetSpecs[]{
    {
        .dataSet = {&TDM::pFIBDataSet1, "pFIBDataSet1"},
        .source = {&TDM::DataSource1, "DataSource1"},
        .query = {fields::regions, u"REGION", QueryRows::OrderedByName},
    },
    {
        .dataSet = {&TDM::pFIBDataSet2, "pFIBDataSet2"},
        .source = {}, // no view shows the periods
        .query = {fields::periods, u"PERIOD_TABLE", QueryRows::OrderedByPeriod},
    },
    {
        .dataSet = {&TDM::pFIBDataSet3, "pFIBDataSet3"},
        .source = {&TDM::DataSource3, "DataSource3"},
        .query = {fields::materials, &Tables::materials, QueryRows::OfPeriodAndRegion},
    },
    {
        .dataSet = {&TDM::pFIBDataSet4, "pFIBDataSet4"},
        .source = {&TDM::DataSource4, "DataSource4"},
        .query = {fields::contents, &Tables::contents, QueryRows::OfPeriodAndRegion},
    },
    {
        .dataSet = {&TDM::pFIBDataSet5, "pFIBDataSet5"},
        .source = {&TDM::DataSource5, "DataSource5"},
        .query = {fields::machines, &Tables::machines, QueryRows::OfPeriodAndRegion},
    },
    {
        .dataSet = {&TDM::pFIBDataSet6, "pFIBDataSet6"},
        .source = {&TDM::DataSource6, "DataSource6"},
        .query = {fields::labour, &Tables::labour, QueryRows::OfPeriodAndRegion},
    },
    {
        .dataSet = {&TDM::pFIBDataSet7, "pFIBDataSet7"},
        .source = {&TDM::DataSource7, "DataSource7"},
        .query = {fields::firms, u"FIRMS", QueryRows::Whole},
    },
    {
        .dataSet = {&TDM::pFIBDataSet8, "pFIBDataSet8"},
        .source = {&TDM::DataSource8, "DataSource8"},
        .query = {fields::coefficients, u"OGRANICHENIE", QueryRows::Whole},
    },
    {
        .dataSet = {&TDM::pFIBDataSet9, "pFIBDataSet9"},
        .source = {&TDM::DataSource9, "DataSource9"},
        .query = {fields::catalogTree, u"KATALOG", QueryRows::Whole},
    },
    {
        .dataSet = {&TDM::pFIBDataSet10, "pFIBDataSet10"},
        .source = {&TDM::DataSource10, "DataSource10"},
        .query = {fields::transport, u"FER20KATALOGPEREVOZKA_TABLE", QueryRows::OfPeriodAndRegion},
    },
};

db::DataSet makeDataSet(TDM& module, db::DataSet TDM::*member) {
    const DataSetSpec& spec =
        *std::find_if(std::begin(dataSetSpecs), std::end(dataSetSpecs),
                      [&](const DataSetSpec& row) { return row.dataSet.member == member; });
    const Query& query = spec.query;
    return db::DataSet(QString::fromLatin1(spec.dataSet.name), query.fields,
                       data::initialQuery(query.fields, query.tableOf(data::initialEdition), query.rows),
                       module.pFIBDatabase1, module.RFIBTransaction, &module);
}

db::DataSource makeDataSource(TDM& module, db::DataSource TDM::*member) {
    const DataSetSpec& spec =
        *std::find_if(std::begin(dataSetSpecs), std::end(dataSetSpecs),
                      [&](const DataSetSpec& row) { return row.source.member == member; });
    return db::DataSource(QString::fromLatin1(spec.source.name), module.*spec.dataSet.member, &module);
}

/// The datasets whose rows of the table fulfil a condition, in the table's order.
template <typename Condition>
std::vector<db::DataSet*> dataSetsWhere(TDM& module, Condition condition) {
    std::vector<db::DataSet*> found;
    for (const DataSetSpec& spec : dataSetSpecs) {
        if (condition(spec.query)) {
            found.push_back(&(module.*spec.dataSet.member));
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
                      pFIBDatabase1, this),
      pFIBDataSet1(makeDataSet(*this, &TDM::pFIBDataSet1)),
      pFIBDataSet2(makeDataSet(*this, &TDM::pFIBDataSet2)),
      pFIBDataSet3(makeDataSet(*this, &TDM::pFIBDataSet3)),
      pFIBDataSet4(makeDataSet(*this, &TDM::pFIBDataSet4)),
      pFIBDataSet5(makeDataSet(*this, &TDM::pFIBDataSet5)),
      pFIBDataSet6(makeDataSet(*this, &TDM::pFIBDataSet6)),
      pFIBDataSet7(makeDataSet(*this, &TDM::pFIBDataSet7)),
      pFIBDataSet8(makeDataSet(*this, &TDM::pFIBDataSet8)),
      pFIBDataSet9(makeDataSet(*this, &TDM::pFIBDataSet9)),
      pFIBDataSet10(makeDataSet(*this, &TDM::pFIBDataSet10)),
      DataSource1(makeDataSource(*this, &TDM::DataSource1)),
      DataSource3(makeDataSource(*this, &TDM::DataSource3)),
      DataSource4(makeDataSource(*this, &TDM::DataSource4)),
      DataSource5(makeDataSource(*this, &TDM::DataSource5)),
      DataSource6(makeDataSource(*this, &TDM::DataSource6)),
      DataSource7(makeDataSource(*this, &TDM::DataSource7)),
      DataSource8(makeDataSource(*this, &TDM::DataSource8)),
      DataSource9(makeDataSource(*this, &TDM::DataSource9)),
      DataSource10(makeDataSource(*this, &TDM::DataSource10)) {
    setObjectName(QStringLiteral("DM"));
}

TDM::~TDM() {
    if (DM == this) {
        DM = nullptr;
    }
}

std::vector<db::DataSet*> TDM::dataSets() {
    return dataSetsWhere(*this, [](const Query&) { return true; });
}

std::vector<db::DataSet*> TDM::selectionDataSets() {
    return dataSetsWhere(*this,
                         [](const Query& query) { return query.rows == QueryRows::OfPeriodAndRegion; });
}

void TDM::connectTo(const QString& server) {
    pFIBDatabase1.setDatabaseName(databaseNameOn(server));
    pFIBDatabase1.open();
}

void TDM::chooseEdition(const data::Edition& edition) {
    for (const DataSetSpec& spec : dataSetSpecs) {
        if (spec.query.isOfEdition()) {
            db::DataSet& dataSet = this->*spec.dataSet.member;
            dataSet.close();
            dataSet.setSql(data::editionQuery(spec.query.fields, spec.query.tableOf(edition)));
            dataSet.prepare();
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
