// SPDX-License-Identifier: MIT

#include "bench/catalog.h"
#include "bench/memory.h"
#include "bench/rows.h"
#include "data/selection.h"

namespace bench {

namespace {

constexpr int rounds = 15;
constexpr double bytesPerMegabyte = 1024.0 * 1024.0;

/// Bytes that the values take without anything around them.
double valueBytes(const db::DataSet& dataSet) {
    std::size_t bytes = 0;
    for (const db::Field* field : dataSet.fields()) {
        for (int row = 0; row < dataSet.rowCount(); ++row) {
            if (dataSet.rows().isNull(row, field->index())) {
                continue;
            }
            switch (field->kind()) {
            case db::FieldKind::String:
                bytes += dataSet.rows().string(row, field->index()).size();
                break;
            case db::FieldKind::Integer32:
                bytes += sizeof(std::int32_t);
                break;
            case db::FieldKind::Integer64:
            case db::FieldKind::Decimal:
                bytes += sizeof(std::int64_t);
                break;
            }
        }
    }
    return static_cast<double>(bytes);
}

} // namespace

std::vector<Result> measureOpen(const Surroundings& surroundings) {
    TDM module;
    module.connectTo(surroundings.server);
    db::DataSet& materials = module.pFIBDataSet3;
    const Stretch& stretch = threeHundredThousand;
    const QString period = QString::fromLatin1(stretch.period);
    data::bindSelection(materials, period, stretch.region);
    BareQuery query(module, materials);

    const Medians medians = alternate(
        rounds,
        [&](int) {
            const double taken = timeOf([&] { materials.open(); });
            requireSame("rows", materials.rowCount(), stretch.materials);
            materials.close();
            return taken;
        },
        [&](int) {
            int rows = 0;
            const double taken = timeOf([&] { rows = query.read(period, stretch.region); });
            requireSame("rows", stretch.materials, rows);
            return taken;
        });
    return {{QStringLiteral("open"), QStringLiteral("open 300,000 materials"), medians.ours, medians.bare,
             QStringLiteral("ms"), LimitOf::Ratio, 1.10}};
}

std::vector<Result> measureMemory(const Surroundings& surroundings) {
    TDM module;
    module.connectTo(surroundings.server);
    // The first opening also fills what the client library keeps for the next ones.
    openMaterials(module, thousand);
    module.pFIBDataSet3.close();

    const double before = residentMegabytes();
    openMaterials(module, threeHundredThousand);
    const double held = residentMegabytes() - before;
    return {{QStringLiteral("memory"), QStringLiteral("hold 300,000 materials"), held,
             valueBytes(module.pFIBDataSet3) / bytesPerMegabyte, QStringLiteral("MB"), LimitOf::Ratio, 1.18}};
}

} // namespace bench
