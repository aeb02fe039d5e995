#include "records/description.h"

#include <algorithm>

namespace zarven::tool {

const FieldDescription* RecordDescription::field(const std::string& key) const {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&key](const auto& field) { return field.key == key; });
    return found == fields.end() ? nullptr : &*found;
}

std::vector<std::string> RecordDescription::keys() const {
    std::vector<std::string> keys;
    for (const FieldDescription& field : fields)
        keys.push_back(field.key);
    return keys;
}

static void collect(const RecordDescription& record, std::vector<const RecordDescription*>& records) {
    for (const FieldDescription& field : record.fields) {
        const ValueDescription* value = &field.value;
        while (value->kind == ValueKind::list)
            value = &value->entry.front();
        if (value->record == nullptr ||
            std::find(records.begin(), records.end(), value->record) != records.end())
            continue;
        records.push_back(value->record);
        collect(*value->record, records);
    }
}

std::vector<const RecordDescription*> records_within(const RecordDescription& record) {
    std::vector<const RecordDescription*> records;
    collect(record, records);
    return records;
}

} // namespace zarven::tool
