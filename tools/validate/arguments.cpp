#include "tools/validate/arguments.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <sstream>

namespace {

template <class Number>
void put(std::vector<char>& bytes, Number number) {
    std::memcpy(bytes.data(), &number, sizeof number);
}

// Whatever the locale is.
float numberIn(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    float number = 0.0f;
    stream >> number;
    return number;
}

}  // namespace

HostBlock::HostBlock(BlockKind kind, const char* in) {
    if (kind == BlockKind::NONE) return;
    if (isOutput(kind)) {
        m_bytes.assign(kRoom, kFill);
        m_size = kRoom;
        return;
    }
    const std::string input = in ? in : "";
    m_bytes.assign(input.size() + 64, '\0');
    m_size = kind == BlockKind::IN_TEXT ? static_cast<int>(input.size() + 1) : 4;
    if (kind == BlockKind::IN_TEXT) {
        std::copy(input.begin(), input.end(), m_bytes.begin());
    } else if (kind == BlockKind::IN_FLOAT) {
        put(m_bytes, numberIn(input));
    } else {
        put(m_bytes, static_cast<std::int32_t>(std::strtol(input.c_str(), nullptr, 10)));
    }
}

HostBlock HostBlock::in(const std::string& text) {
    return HostBlock(BlockKind::IN_TEXT, text.c_str());
}

bool HostBlock::isUntouched() const {
    return std::all_of(m_bytes.begin(), m_bytes.end(), [](char byte) { return byte == kFill; });
}

template <class Number>
Number HostBlock::number(std::size_t at) const {
    Number number;
    std::memcpy(&number, m_bytes.data() + at, sizeof number);
    return number;
}
template std::int32_t HostBlock::number<std::int32_t>(std::size_t) const;
template float HostBlock::number<float>(std::size_t) const;

Arguments::Arguments(const StatedCall& call)
    : value(call.value),
      own1(entryOf(call).block1, call.in1),
      own2(entryOf(call).block2, call.in2) {
    if (call.text) ownText = HostBlock::in(call.text);
    text = ownText.data();
    block1 = own1.data();
    size1 = own1.size();
    block2 = own2.data();
    size2 = own2.size();
    if (entryOf(call).group != "placement") return;
    windows = makeHostWindows();
    host = windows->data();
}

std::unique_ptr<HostWindows> makeHostWindows() {
    auto windows = std::make_unique<HostWindows>();
    HostWindow& tool = windows->add(&windows->add(nullptr, "Top"), "Tool");
    for (const char* name : {"Import", "Export", "Last"}) windows->add(&tool, name);
    return windows;
}
