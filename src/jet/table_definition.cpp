#include "jet/table_definition.h"

#include "base/text.h"

namespace jet {

int TableDefinition::find(std::string_view fieldName) const {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (base::equalIgnoringCase(fields[i].name, fieldName)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace jet
