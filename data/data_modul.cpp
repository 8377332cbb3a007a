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

/// A catalog dataset, what its query reads, and the data source through which views show it.
struct DataSetSpec {
    int number; ///< ends both object names
    db::DataSet TDM::*dataSet;
    db::DataSource TDM::*source; ///< null where no view shows the dataset
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
    {1, &TDM::pFIBDataSet1, &TDM::DataSource1, fields::regions, u"REGION", ByName},
    {2, &TDM::pFIBDataSet2, nullptr, fields::periods, u"PERIOD_TABLE", ByPeriod},
    {3, &TDM::pFIBDataSet3, &TDM::DataSource3, fields::materials, &Tables::materials, OfSelection},
    {4, &TDM::pFIBDataSet4, &TDM::DataSource4, fields::contents, &Tables::contents, OfSelection},
    {5, &TDM::pFIBDataSet5, &TDM::DataSource5, fields::machines, &Tables::machines, OfSelection},
    {6, &TDM::pFIBDataSet6, &TDM::DataSource6, fields::labour, &Tables::labour, OfSelection},
    {7, &TDM::pFIBDataSet7, &TDM::DataSource7, fields::firms, u"FIRMS", Whole},
    {8, &TDM::pFIBDataSet8, &TDM::DataSource8, fields::coefficients, u"OGRANICHENIE", Whole},
    {9, &TDM::pFIBDataSet9, &TDM::DataSource9, fields::catalogTree, u"KATALOG", Whole},
    {10, &TDM::pFIBDataSet10, &TDM::DataSource10, fields::transport, transportTable, OfSelection},
};

/// The row that names a member.
template <typename Component>
const DataSetSpec& specOf(Component TDM::*DataSetSpec::*part, Component TDM::*member) {
    return *std::find_if(std::begin(dataSetSpecs), std::end(dataSetSpecs),
                         [&](const DataSetSpec& spec) { return spec.*part == member; });
}

db::DataSet makeDataSet(TDM& module, db::DataSet TDM::*member) {
    const DataSetSpec& spec = specOf(&DataSetSpec::dataSet, member);
    return db::DataSet(QStringLiteral("pFIBDataSet%1").arg(spec.number), spec.fields,
                       data::initialQuery(spec.fields, spec.tableOf(data::initialEdition), spec.rows),
                       module.pFIBDatabase1, module.RFIBTransaction, &module);
}

db::DataSource makeDataSource(TDM& module, db::DataSource TDM::*member) {
    const DataSetSpec& spec = specOf(&DataSetSpec::source, member);
    return db::DataSource(QStringLiteral("DataSource%1").arg(spec.number), module.*spec.dataSet, &module);
}

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
    return dataSetsWhere(*this, [](const DataSetSpec&) { return true; });
}

std::vector<db::DataSet*> TDM::selectionDataSets() {
    return dataSetsWhere(*this, [](const DataSetSpec& spec) { return spec.rows == OfSelection; });
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

QString TDM::databaseNameOn(const QString& server) {
    return server + QStringLiteral("/3050:C:\\DATA\\BAZAKATALOG.FDB");
}

QStringList TDM::connectionParameters() {
    return {QStringLiteral("password=") + QString::fromLatin1(password),
            QStringLiteral("user_name=") + QString::fromLatin1(userName), QStringLiteral("lc_ctype=WIN1251")};
}
