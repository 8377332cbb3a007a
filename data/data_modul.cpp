#include "data/data_modul.h"

#include "base/text.h"
#include "data/catalog_fields.h"
#include "data/catalog_queries.h"

#include <stdexcept>

TDM* DM = nullptr;
std::int32_t CurRegionId = 0;
QString CurPeriod;

namespace {

using data::Selection;

/// What a catalog dataset is made of.
struct DataSetSpec {
    const char* name;
    std::span<const db::FieldSpec> fields;
    std::u16string_view table;
    Selection selection;
};

constexpr std::array<DataSetSpec, 10> dataSetSpecs{{
    {"pFIBDataSet1", data::fields::regions, u"REGION", Selection::OrderedByName},
    {"pFIBDataSet2", data::fields::periods, u"PERIOD_TABLE", Selection::OrderedByPeriod},
    {"pFIBDataSet3", data::fields::materials, data::editions[0].tables[0], Selection::OfPeriodAndRegion},
    {"pFIBDataSet4", data::fields::contents, data::editions[0].tables[1], Selection::OfPeriodAndRegion},
    {"pFIBDataSet5", data::fields::machines, data::editions[0].tables[2], Selection::OfPeriodAndRegion},
    {"pFIBDataSet6", data::fields::labour, data::editions[0].tables[3], Selection::OfPeriodAndRegion},
    {"pFIBDataSet7", data::fields::firms, u"FIRMS", Selection::Whole},
    {"pFIBDataSet8", data::fields::coefficients, u"OGRANICHENIE", Selection::Whole},
    {"pFIBDataSet9", data::fields::catalogTree, u"KATALOG", Selection::Whole},
    {"pFIBDataSet10", data::fields::transport, u"FER20KATALOGPEREVOZKA_TABLE", Selection::OfPeriodAndRegion},
}};

constexpr std::size_t firstEditionDataSet = 2;

/// Makes the dataset with that number (1 to 10) of `module`.
db::DataSet makeDataSet(TDM& module, std::size_t number) {
    const DataSetSpec& spec = dataSetSpecs[number - 1];
    return db::DataSet(QString::fromLatin1(spec.name), spec.fields,
                       data::initialQuery(spec.fields, spec.table, spec.selection), module.pFIBDatabase1,
                       module.RFIBTransaction, &module);
}

db::DataSource makeDataSource(TDM& module, int number, db::DataSet& dataSet) {
    return db::DataSource(QStringLiteral("DataSource%1").arg(number), dataSet, &module);
}

} // namespace

TDM::TDM(QObject* parent)
    : QObject(parent),
      pFIBDatabase1(QStringLiteral("pFIBDatabase1"), databaseNameOn(QString::fromLatin1(localServer)),
                    {QStringLiteral("password=pinewoods"), QStringLiteral("user_name=SYSDBA"),
                     QStringLiteral("lc_ctype=WIN1251")},
                    db::ClientLibrary::defaultNames(), this),
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

db::DataSource& TDM::dataSource(std::u16string_view name) {
    auto* const found = findChild<db::DataSource*>(base::toQString(name));
    if (found == nullptr) {
        throw std::logic_error("no data source " + base::toQString(name).toStdString());
    }
    return *found;
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
