#pragma once

#include <memory>
#include <string>
#include <vector>

#include "exports/vek.h"
#include "tools/validate/stated_calls.h"
#include "tools/vek/host_windows.h"

// What fills a block out before the call, so that an untouched one can be told.
constexpr char kFill = '\x5A';

// A block of the host's, with room to spare behind what it holds.
class HostBlock {
public:
    static constexpr std::size_t kRoom = 8192;

    HostBlock() = default;  // none: a null pointer
    // For an export that uses a block in this way; `in` is what a block in holds.
    HostBlock(BlockKind kind, const char* in);
    static HostBlock out() { return HostBlock(BlockKind::OUT_TEXT, nullptr); }
    static HostBlock in(const std::string& text);

    char* data() { return m_bytes.empty() ? nullptr : m_bytes.data(); }
    int size() const { return m_size; }  // as the host says it
    const std::vector<char>& bytes() const { return m_bytes; }

    bool isUntouched() const;  // of a block out
    std::string text() const { return std::string(m_bytes.data()); }
    template <class Number>
    Number number(std::size_t at = 0) const;

private:
    std::vector<char> m_bytes;
    int m_size = 0;
};

// The seven arguments of a call. Those that the export does not use are null or 0.
struct Arguments {
    // Of the ordinary call. The window tree that is moved in is made anew.
    explicit Arguments(const StatedCall& call);

    char* text = nullptr;
    double value = 0.0;
    char* block1 = nullptr;
    int size1 = 0;
    char* block2 = nullptr;
    int size2 = 0;
    char** host = nullptr;

    // The text is another one.
    void setText(const std::string& other) {
        ownText = HostBlock::in(other);
        text = ownText.data();
    }

    // What the pointers point to, unless somebody has changed them.
    HostBlock ownText, own1, own2;
    std::unique_ptr<HostWindows> windows;

    float passTo(VekExport function) const {
        return function(text, value, block1, size1, block2, size2, host);
    }
};

// Top > Tool > Import, Export, Last.
std::unique_ptr<HostWindows> makeHostWindows();
