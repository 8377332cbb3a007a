#include "data/data_modul.h"

#include "data/catalog_fields.h"
#include "data/catalog_queries.h"

TDM* DM = nullptr;

namespace {

using data::QueryRows;

/// What a catalog dataset is made of.
struct DataSetSpec {
    const char* name;
    std::span<const db::FieldSpec> fields;
    std::u16string_view table;
    QueryRows rows;
};

constexpr std::array<DataSetSpec, 10> dataSetSpecs{{
    {"pFIBDataSet1", data::fields::regions, u"REGION", QueryRows::OrderedByName},
    {"pFIBDataSet2", data::fields::periods, u"PERIOD_TABLE", QueryRows::OrderedByPeriod},
    {"pFIBDataSet3", data::fields::materials, data::editions[0].tables[0], QueryRows::OfPeriodAndRegion},
    {"pFIBDataSet4", data::fields::contents, data::editions[0].tables[1], QueryRows::OfPeriodAndRegion},
    {"pFIBDataSet5", data::fields::machines, data::editions[0].tables[2], QueryRows::OfPeriodAndRegion},
    {"pFIBDataSet6", data::fields::labour, data::editions[0].tables[3], QueryRows::OfPeriodAndRegion},
    {"pFIBDataSet7", data::fields::firms, u"FIRMS", QueryRows::Whole},
    {"pFIBDataSet8", data::fields::coefficients, u"OGRANICHENIE", QueryRows::Whole},
    {"pFIBDataSet9", data::fields::catalogTree, u"KATALOG", QueryRows::Whole},
    {"pFIBDataSet10", data::fields::transport, u"FER20KATALOGPEREVOZKA_TABLE", QueryRows::OfPeriodAndRegion},
}};

constexpr std::size_t firstEditionDataSet = 2;

/// Makes the dataset with that number (1 to 10) of `module`.
db::DataSet makeDataSet(TDM& module, std::size_t number) {
    const DataSetSpec& spec = dataSetSpecs[number - 1];
    return db::DataSet(QString::fromLatin1(spec.name), spec.fields,
                       data::initialQuery(spec.fields, spec.table, spec.rows), module.pFIBDatabase1,
                       module.RFIBTransaction, &module);
}

db::DataSource makeDataSource(TDM& module, int number, db::DataSet& dataSet) {
    return db::DataSource(QStringLiteral("DataSource%1").arg(number), dataSet, &module);
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
      pFIBDataSet1(makeDataSet(*this, 1)),
      pFIBDataSet2(makeDataSet(*this, 2)),
      pFIBDataSet3(makeDataSet(*this, 3)),
      pFIBDataSet4(makeDataSet(*this, 4)),
      pFIBDataSet5(makeDataSet(*this, 5)),
      pFIBDataSet6(makeDataSet(*this, 6)),
      pFIBDataSet7(makeDataSet(*this, 7)),
      pFIBDataSet8(makeDataSet(*this, 8)),
      pFIBDataSet9(makeDataSet(*this, 9)),
      pFIBDataSet10(makeDataSet(*this, 10)),
      DataSource1(makeDataSource(*this, 1, pFIBDataSet1)),
      DataSource3(makeDataSource(*this, 3, pFIBDataSet3)),
      DataSource4(makeDataSource(*this, 4, pFIBDataSet4)),
      DataSource5(makeDataSource(*this, 5, pFIBDataSet5)),
      DataSource6(makeDataSource(*this, 6, pFIBDataSet6)),
      DataSource7(makeDataSource(*this, 7, pFIBDataSet7)),
      DataSource8(makeDataSource(*this, 8, pFIBDataSet8)),
      DataSource9(makeDataSource(*this, 9, pFIBDataSet9)),
      DataSource10(makeDataSource(*this, 10, pFIBDataSet10)) {
    setObjectName(QStringLiteral("DM"));
}

TDM::~TDM() {
    if (DM == this) {
        DM = nullptr;
    }
}

std::array<db::DataSet*, 10> TDM::dataSets() {
    return {&pFIBDataSet1, &pFIBDataSet2, &pFIBDataSet3, &pFIBDataSet4, &pFIBDataSet5,
            &pFIBDataSet6, &pFIBDataSet7, &pFIBDataSet8, &pFIBDataSet9, &pFIBDataSet10};
}

std::array<db::DataSet*, data::editionDataSetCount> TDM::editionDataSets() {
    return {&pFIBDataSet3, &pFIBDataSet4, &pFIBDataSet5, &pFIBDataSet6};
}

std::array<db::DataSet*, 5> TDM::selectionDataSets() {
    return {&pFIBDataSet3, &pFIBDataSet4, &pFIBDataSet5, &pFIBDataSet6, &pFIBDataSet10};
}

void TDM::connectTo(const QString& server) {
    pFIBDatabase1.setDatabaseName(databaseNameOn(server));
    pFIBDatabase1.open();
}

void TDM::chooseEdition(const data::Edition& edition) {
    const auto chosen = editionDataSets();
    for (std::size_t index = 0; index < chosen.size(); ++index) {
        db::DataSet& dataSet = *chosen[index];
        const DataSetSpec& spec = dataSetSpecs[firstEditionDataSet + index];
        dataSet.close();
        dataSet.setSql(data::editionQuery(spec.fields, edition.tables[index]));
        dataSet.prepare();
    }
}

QString TDM::databaseNameOn(const QString& server) {
    return server + QStringLiteral("/3050:C:\\DATA\\BAZAKATALOG.FDB");
}

QStringList TDM::connectionParameters() {
    return {QStringLiteral("password=") + QString::fromLatin1(password),
            QStringLiteral("user_name=") + QString::fromLatin1(userName), QStringLiteral("lc_ctype=WIN1251")};
}
