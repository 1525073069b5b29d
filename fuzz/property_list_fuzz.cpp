// Whatever bytes as a property list, in which the input's first line is looked up.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/support.h"
#include "os/property_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::string key = input.line().c_str();
    const std::string& list = input.rest();
    std::string value = "as it was";
    const bool isThere = bxPropertyListText(list.data(), list.size(), key.c_str(), value);
    if (!isThere) expect(value == "as it was");
    // One byte can become three: U+FFFD for half a surrogate's two.
    if (isThere) expect(value.size() <= 3 * list.size());
    if (list.compare(0, 8, "bplist00") == 0) return 0;

    // Of XML, what stands behind the text that was found does not count.
    const std::string longer = list + "<dict></string>&amp;<!-- ";
    std::string again;
    if (isThere) {
        expect(bxPropertyListText(longer.data(), longer.size(), key.c_str(), again));
        expect(again == value);
    }
    return 0;
}
