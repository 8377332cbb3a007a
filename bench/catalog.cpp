// SPDX-License-Identifier: MIT

#include "bench/catalog.h"

#include "base/win1251.h"
#include "bench/measure.h"
#include "data/selection.h"
#include "db/named_parameters.h"

#include <cstring>

namespace bench {

QString regionName(std::int32_t region) {
    return QStringLiteral("Область %1").arg(region, 3, 10, QLatin1Char('0'));
}

void openMaterials(TDM& module, const Stretch& stretch) {
    db::DataSet& materials = module.pFIBDataSet3;
    data::bindSelection(materials, QString::fromLatin1(stretch.period), stretch.region);
    materials.open();
    requireSame("materials", materials.rowCount(), stretch.materials);
}

BareQuery::BareQuery(TDM& module, const db::DataSet& dataSet) : module_(module) {
    module.RFIBTransaction.start();
    const QByteArray sql = base::win1251::encode(db::toPositional(dataSet.sql().join(u'\n')).sql);
    module.pFIBDatabase1.run([&](auto* status) {
        statement_.reset(module.pFIBDatabase1.handle().prepare(
            status, module.RFIBTransaction.handle(), static_cast<unsigned>(sql.size()), sql.constData(),
            SQL_DIALECT_V6, Firebird::IStatement::PREPARE_PREFETCH_METADATA));
        const db::Handle<Firebird::IMessageMetadata> output(statement_->getOutputMetadata(status));
        message_.resize(output->getMessageLength(status));
        const db::Handle<Firebird::IMessageMetadata> declared(statement_->getInputMetadata(status));
        if (declared->getCount(status) == 0) {
            return;
        }
        const db::Handle<Firebird::IMetadataBuilder> builder(declared->getBuilder(status));
        builder->setType(status, 1, SQL_LONG);
        builder->setLength(status, 1, sizeof(std::int32_t));
        inputMetadata_.reset(builder->getMetadata(status));
        input_.resize(inputMetadata_->getMessageLength(status));
    });
}

void BareQuery::bind(const QString& period, std::int32_t region) {
    const QByteArray text = base::win1251::encode(period);
    const auto length = static_cast<std::uint16_t>(text.size());
    module_.pFIBDatabase1.run([&](auto* status) {
        unsigned char* const first = input_.data() + inputMetadata_->getOffset(status, 0);
        std::memcpy(first, &length, sizeof length);
        std::memcpy(first + sizeof length, text.constData(), length);
        std::memcpy(input_.data() + inputMetadata_->getOffset(status, 1), &region, sizeof region);
    });
}

db::Handle<Firebird::IResultSet> BareQuery::openCursor() {
    return module_.pFIBDatabase1.run([&](auto* status) {
        return db::Handle<Firebird::IResultSet>(statement_->openCursor(
            status, module_.RFIBTransaction.handle(), inputMetadata_.get(), input_.data(), nullptr, 0));
    });
}

int BareQuery::read(const QString& period, std::int32_t region) {
    bind(period, region);
    return read();
}

double BareQuery::timeUntilFirstRow(const QString& period, std::int32_t region) {
    bind(period, region);
    db::Handle<Firebird::IResultSet> cursor;
    return timeOf([&] {
        cursor = openCursor();
        module_.pFIBDatabase1.run([&](auto* status) {
            requireSame("rows", 1,
                        cursor->fetchNext(status, message_.data()) == Firebird::IStatus::RESULT_OK);
        });
    });
}

int BareQuery::read() {
    db::Handle<Firebird::IResultSet> cursor = openCursor();
    return module_.pFIBDatabase1.run([&](auto* status) {
        int rows = 0;
        while (cursor->fetchNext(status, message_.data()) == Firebird::IStatus::RESULT_OK) {
            ++rows;
        }
        cursor->close(status);
        static_cast<void>(cursor.release());
        return rows;
    });
}

} // namespace bench
