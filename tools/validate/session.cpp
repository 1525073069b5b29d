#include "tools/validate/session.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>

void Session::prepare() {
    call("InitializeVek", "/Applications");
    call("GetVekAppIOPrefs");
    call("ReadVekObjectList");
}

bool Session::has(const StatedCall& call) {
    if (m_library.find(call.name)) return true;
    m_report.cannotTry(MissingExport{call.name}.sentence());
    return false;
}

float Session::call(const StatedCall& call, const Arguments& arguments) {
    m_last = call.name;
    const ExportEntry& entry = entryOf(call);
    if (!entry.text.empty()) m_last += " " + (arguments.text ? quoted(arguments.text) : "null");
    if (!entry.value.empty()) m_last += " " + asText(arguments.value);
    return pass(call.name, arguments, m_last);
}

float Session::pass(const char* name, const Arguments& arguments, const std::string& told) {
    const VekExport function = m_library.find(name);
    if (!function) throw MissingExport{name};
    m_report.calls(told);
    m_isThrown = false;
    try {
        return arguments.passTo(function);
    } catch (const std::exception& error) {
        m_report.finds(told + " let an exception out: " + quoted(error.what()));
    } catch (...) {
        m_report.finds(told + " let an exception out");
    }
    m_isThrown = true;
    return std::nanf("");
}

float Session::call(const char* name, const std::string& text, double value, char* block1,
                    char* block2, char** host) {
    const StatedCall& stated = statedCall(name);
    Arguments arguments(stated);
    arguments.ownText = HostBlock::in(text);
    arguments.text = entryOf(stated).text.empty() ? nullptr : arguments.ownText.data();
    arguments.value = value;
    arguments.block1 = block1;
    arguments.block2 = block2;
    arguments.host = host;
    return call(stated, arguments);
}

void Session::expect(float stated, const StatedCall& call, const Arguments& arguments,
                     const std::string& when) {
    const float result = this->call(call, arguments);
    // NaN is never equal, and never stated.
    if (m_isThrown || result == stated) return;
    m_report.finds(m_last + " gave " + asText(result) + "; stated is " + asText(stated) +
                   (when.empty() ? "" : " " + when));
}

void Session::expect(float stated, const char* name, const std::string& text, double value,
                     char* block1, char* block2, char** host) {
    const float result = call(name, text, value, block1, block2, host);
    if (m_isThrown || result == stated) return;
    m_report.finds(m_last + " gave " + asText(result) + "; stated is " + asText(stated));
}

void Session::expectFile(const std::string& path, const std::string& bytes) {
    if (!tree::isThere(path)) {
        m_report.finds("after " + m_last + " there is no file " + path);
        return;
    }
    const std::string found = tree::read(path);
    if (found == bytes) return;
    const auto ends = std::mismatch(found.begin(), found.end(), bytes.begin(), bytes.end());
    const auto at = static_cast<std::size_t>(ends.first - found.begin());
    m_report.finds("after " + m_last + " the file " + path + " has from byte " +
                   std::to_string(at) + " on " + quoted(found.substr(at)) + "; stated is " +
                   quoted(bytes.substr(at)));
}

void Session::expectNoFile(const std::string& path) {
    if (tree::isThere(path)) m_report.finds(m_last + " made " + path);
}

void Session::expectText(const HostBlock& block, const std::string& text) {
    if (block.isUntouched()) {
        m_report.finds(m_last + " gave no text; stated is " + quoted(text));
    } else if (block.text() != text) {
        m_report.finds(m_last + " gave the text " + quoted(block.text()) + "; stated is " +
                       quoted(text));
    }
}

void Session::expectUntouched(const HostBlock& block) {
    if (!block.isUntouched()) m_report.finds(m_last + " wrote to a block that it is to leave");
}

bool isCallable([[maybe_unused]] const StatedCall& call) {
#ifdef __APPLE__
    // Its panel would wait for somebody.
    return entryOf(call).group != "panel";
#else
    return true;
#endif
}

std::string asText(float number) {
    return asText(static_cast<double>(number));
}

std::string asText(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", number);
    return text;
}

std::string quoted(const std::string& text) {
    constexpr std::size_t kLongest = 80;
    if (text.size() <= kLongest) return '"' + text + '"';
    return '"' + text.substr(0, kLongest) + "…\" (" + std::to_string(text.size()) + " bytes)";
}
