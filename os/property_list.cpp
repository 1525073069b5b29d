#include "os/property_list.h"

#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

void appendUtf8(std::string& text, std::uint32_t c) {
    if (c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) c = 0xFFFD;
    if (c < 0x80) {
        text += static_cast<char>(c);
        return;
    }
    const int rest = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    const unsigned int lead = 0xFF00u >> (rest + 1) & 0xFFu;
    text += static_cast<char>(lead | c >> 6 * rest);
    for (int i = rest - 1; i >= 0; --i) text += static_cast<char>(0x80 | (c >> 6 * i & 0x3F));
}

// ---- XML ----------------------------------------------------------------------------------------

class XmlTags {
public:
    enum Kind { Opening, Closing, Empty, End };

    explicit XmlTags(std::string_view xml) : m_rest(xml) {}

    // Goes on to the next tag; text() is then what stood before it. Comments, instructions and the
    // document type are no tags. Damaged XML ends here.
    Kind next() {
        m_text.clear();
        for (;;) {
            takeText();
            if (m_rest.empty()) return End;
            if (startsWith("<![CDATA[")) {
                const std::string_view data = takeThrough("]]>").substr(9);
                m_text.append(data.substr(0, data.size() < 3 ? 0 : data.size() - 3));
            } else if (startsWith("<!--")) {
                takeThrough("-->");
            } else if (startsWith("<?") || startsWith("<!")) {
                takeThrough(">");
            } else {
                return takeTag();
            }
        }
    }
    std::string_view name() const { return m_name; }
    const std::string& text() const { return m_text; }

private:
    bool startsWith(std::string_view head) const { return m_rest.substr(0, head.size()) == head; }

    // What reaches through `end`; all that is left where there is no such end.
    std::string_view takeThrough(std::string_view end) {
        const std::size_t found = m_rest.find(end);
        const std::size_t size = found == m_rest.npos ? m_rest.size() : found + end.size();
        const std::string_view taken = m_rest.substr(0, size);
        m_rest.remove_prefix(size);
        return taken;
    }

    void takeText() {
        while (!m_rest.empty() && m_rest.front() != '<') {
            if (m_rest.front() == '&' && takeEntity()) continue;
            m_text += m_rest.front();
            m_rest.remove_prefix(1);
        }
    }

    bool takeEntity() {
        const std::size_t end = m_rest.substr(0, 12).find(';');
        if (end == m_rest.npos) return false;
        const std::string_view name = m_rest.substr(1, end - 1);
        std::uint32_t c = 0;
        if (name == "amp") c = '&';
        if (name == "lt") c = '<';
        if (name == "gt") c = '>';
        if (name == "quot") c = '"';
        if (name == "apos") c = '\'';
        if (name.substr(0, 1) == "#") c = numberOf(name.substr(1));
        if (c == 0) return false;
        appendUtf8(m_text, c);
        m_rest.remove_prefix(end + 1);
        return true;
    }

    // 0 where the digits are none.
    static std::uint32_t numberOf(std::string_view digits) {
        const bool isHex = digits.substr(0, 1) == "x";
        const std::uint32_t base = isHex ? 16 : 10;
        if (isHex) digits.remove_prefix(1);
        std::uint32_t number = 0;
        for (const char c : digits) {
            const std::uint32_t digit =
                c >= '0' && c <= '9'   ? static_cast<std::uint32_t>(c - '0')
                : c >= 'a' && c <= 'f' ? static_cast<std::uint32_t>(c - 'a' + 10)
                : c >= 'A' && c <= 'F' ? static_cast<std::uint32_t>(c - 'A' + 10)
                                       : 99;
            if (digit >= base || number > 0x10FFFF) return 0;
            number = number * base + digit;
        }
        return number;
    }

    Kind takeTag() {
        std::string_view tag = takeThrough(">");
        if (tag.back() != '>') return End;
        tag = tag.substr(1, tag.size() - 2);
        const bool isClosing = tag.substr(0, 1) == "/";
        const bool isEmpty = !tag.empty() && tag.back() == '/';
        if (isClosing) tag.remove_prefix(1);
        m_name = tag.substr(0, tag.find_first_of(" \t\r\n/"));
        return isClosing ? Closing : isEmpty ? Empty : Opening;
    }

    std::string_view m_rest;
    std::string_view m_name;
    std::string m_text;
};

bool enterTopDictionary(XmlTags& tags) {
    XmlTags::Kind kind = tags.next();
    if (kind == XmlTags::Opening && tags.name() == "plist") kind = tags.next();
    return kind == XmlTags::Opening && tags.name() == "dict";
}

bool findInXml(std::string_view xml, std::string_view wanted, std::string& value) {
    XmlTags tags(xml);
    if (!enterTopDictionary(tags)) return false;
    std::string key;
    for (std::size_t depth = 0;;) {
        const XmlTags::Kind kind = tags.next();
        if (kind == XmlTags::End || (kind == XmlTags::Closing && depth == 0)) return false;
        if (kind == XmlTags::Opening) ++depth;
        if (kind == XmlTags::Closing) --depth;
        if (kind == XmlTags::Opening || depth > 0) continue;
        const std::string text = kind == XmlTags::Empty ? std::string() : tags.text();
        if (tags.name() == "key") {
            key = text;
        } else if (key == wanted) {
            if (tags.name() == "string") value = text;
            return tags.name() == "string";
        }
    }
}

// ---- Binary: "bplist00", objects, a table of their offsets, and 32 bytes that tell where it is --

class BinaryList {
public:
    explicit BinaryList(std::string_view bytes) : m_bytes(bytes) {}

    bool find(std::string_view wanted, std::string& value) const {
        constexpr std::size_t kTrailer = 32;
        if (m_bytes.size() < 8 + kTrailer) return false;
        const std::size_t trailer = m_bytes.size() - kTrailer;
        Layout layout;
        layout.offsetSize = numberAt(trailer + 6, 1);
        layout.referenceSize = numberAt(trailer + 7, 1);
        layout.count = numberAt(trailer + 8, 8);
        layout.table = numberAt(trailer + 24, 8);
        if (!isWidth(layout.offsetSize) || !isWidth(layout.referenceSize)) return false;
        if (layout.table > trailer) return false;
        if (layout.count > (trailer - layout.table) / layout.offsetSize) return false;
        return findInDictionary(layout, numberAt(trailer + 16, 8), wanted, value);
    }

private:
    struct Layout {
        std::uint64_t offsetSize;
        std::uint64_t referenceSize;
        std::uint64_t count;
        std::uint64_t table;
    };

    static bool isWidth(std::uint64_t size) { return size >= 1 && size <= 8; }

    bool holds(std::uint64_t at, std::uint64_t size) const {
        return at <= m_bytes.size() && size <= m_bytes.size() - at;
    }

    // Most significant byte first. The bytes must be there.
    std::uint64_t numberAt(std::uint64_t at, std::uint64_t size) const {
        std::uint64_t number = 0;
        for (std::uint64_t i = 0; i < size; ++i) {
            number =
                number << 8 | static_cast<unsigned char>(m_bytes[static_cast<std::size_t>(at + i)]);
        }
        return number;
    }

    // Where the object's head is; the size of the file for an object that is not there.
    std::uint64_t offsetOf(const Layout& layout, std::uint64_t object) const {
        if (object >= layout.count) return m_bytes.size();
        return numberAt(layout.table + object * layout.offsetSize, layout.offsetSize);
    }

    // The kind and the number of elements of the object at `at`, which then stands behind its head.
    bool takeHead(std::uint64_t& at, unsigned int& kind, std::uint64_t& elements) const {
        if (!holds(at, 1)) return false;
        const auto head = static_cast<unsigned int>(numberAt(at, 1));
        ++at;
        kind = head >> 4;
        elements = head & 0xF;
        if (elements != 0xF) return true;
        if (!holds(at, 1)) return false;
        const auto marker = static_cast<unsigned int>(numberAt(at, 1));
        const std::uint64_t size = std::uint64_t{1} << (marker & 0xF);
        if (marker >> 4 != 1 || size > 8 || !holds(at + 1, size)) return false;
        elements = numberAt(at + 1, size);
        at += 1 + size;
        return true;
    }

    bool textAt(std::uint64_t at, std::string& text) const {
        constexpr unsigned int kAscii = 5;
        constexpr unsigned int kUtf16 = 6;
        unsigned int kind;
        std::uint64_t length;
        if (!takeHead(at, kind, length)) return false;
        if (kind == kAscii && holds(at, length)) {
            text.assign(
                m_bytes.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(length)));
            return true;
        }
        if (kind != kUtf16 || length > m_bytes.size() || !holds(at, 2 * length)) return false;
        text.clear();
        for (std::uint64_t i = 0; i < length; ++i) {
            auto c = static_cast<std::uint32_t>(numberAt(at + 2 * i, 2));
            if (c >> 10 == 0x36 && i + 1 < length) {
                const auto low = static_cast<std::uint32_t>(numberAt(at + 2 * (i + 1), 2));
                if (low >> 10 == 0x37) {
                    c = 0x10000 + ((c & 0x3FF) << 10 | (low & 0x3FF));
                    ++i;
                }
            }
            appendUtf8(text, c);
        }
        return true;
    }

    // Only texts of the wanted length are read, so that many references to a longer one cost
    // little.
    bool isText(std::uint64_t at, std::string_view wanted) const {
        unsigned int kind;
        std::uint64_t length;
        std::uint64_t head = at;
        if (!takeHead(head, kind, length) || length != wanted.size()) return false;
        std::string text;
        return textAt(at, text) && text == wanted;
    }

    bool findInDictionary(const Layout& layout, std::uint64_t top, std::string_view wanted,
                          std::string& value) const {
        constexpr unsigned int kDictionary = 0xD;
        std::uint64_t at = offsetOf(layout, top);
        unsigned int kind;
        std::uint64_t pairs;
        if (!takeHead(at, kind, pairs) || kind != kDictionary) return false;
        if (pairs > m_bytes.size() || !holds(at, 2 * pairs * layout.referenceSize)) return false;
        const std::uint64_t values = at + pairs * layout.referenceSize;
        for (std::uint64_t i = 0; i < pairs; ++i) {
            const std::uint64_t step = i * layout.referenceSize;
            const std::uint64_t key = numberAt(at + step, layout.referenceSize);
            if (!isText(offsetOf(layout, key), wanted)) continue;
            return textAt(offsetOf(layout, numberAt(values + step, layout.referenceSize)), value);
        }
        return false;
    }

    std::string_view m_bytes;
};

}  // namespace

bool bxPropertyListText(const char* bytes, std::size_t size, const char* key, std::string& value) {
    const std::string_view list(bytes, size);
    if (list.substr(0, 8) == "bplist00") return BinaryList(list).find(key, value);
    return findInXml(list, key, value);
}
