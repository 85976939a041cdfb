// The reader of the list files: any bytes give fields, and a plain list comes back as it was written.
#include "shell/list_file.h"

#include "fuzz/target.h"

using namespace blockhouse;
using fuzz::require;

namespace {

EntryList fieldsOf(const std::string& bytes) {
    ListFileReader reader(bytes);
    EntryList fields;
    while (const auto field = reader.next()) {
        require(field->find_first_of("\r\n") == std::string::npos, "a field holds a line end");
        require(field->empty() || field->front() != ' ' || bytes.find('"') != std::string::npos,
                "blanks before a field are kept");
        fields.add(*field);
        require(static_cast<std::size_t>(fields.count()) <= bytes.size() + 1, "there are more fields than characters");
    }
    return fields;
}

bool isPlain(const std::string& entry) {
    return entry.find_first_of(",\r\n") == std::string::npos && entry.find_first_of(" \"") != 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const EntryList fields = fieldsOf(fuzz::Bytes(data, size).rest());
    EntryList plain;
    for (const std::string& field : fields)
        if (isPlain(field))
            plain.add(field);
    const EntryList again = fieldsOf(writtenList(plain));
    require(std::equal(plain.begin(), plain.end(), again.begin(), again.end()), "a plain list does not come back");
    return 0;
}
