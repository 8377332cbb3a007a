// SPDX-License-Identifier: MIT

#include "support/catalog.h"

#include "data/selection.h"

namespace test {

void openAll(TDM& module, const QString& period, std::int32_t region) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        data::bindSelection(*dataSet, period, region);
    }
    for (db::DataSet* dataSet : module.dataSets()) {
        dataSet->open();
    }
}

} // namespace test
