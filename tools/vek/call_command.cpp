#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "tools/vek/block.h"
#include "tools/vek/commands.h"
#include "tools/vek/library.h"

namespace {

constexpr int kOutSize = 4096;

nlohmann::json asJson(const Block& block, BlockKind kind) {
    if (!block.written()) return nullptr;
    switch (kind) {
        case BlockKind::OUT_INT:
            return block.integer();
        case BlockKind::OUT_BOOL:
            return block.integer() != 0;
        case BlockKind::OUT_FLOAT:
            return block.real();
        case BlockKind::OUT_IO_PREFS:
            return {{"low", block.switches() & 0xFFFFu},
                    {"high", block.switches() >> 16},
                    {"switches", switchNames(block.switches())}};
        default:
            return block.text();
    }
}

void print(const ExportEntry& entry, float result, const Block& block1, const Block& block2) {
    fmt::print("{} returned {} ({})\n", entry.name, result, entry.result);
    if (isOutput(entry.block1)) fmt::print("buffer1: {}\n", block1.readable());
    if (isOutput(entry.block2)) fmt::print("buffer2: {}\n", block2.readable());
}

void printJson(const ExportEntry& entry, float result, const Block& block1, const Block& block2) {
    nlohmann::json json = {{"export", entry.name}, {"result", result}};
    if (isOutput(entry.block1)) json["buffer1"] = asJson(block1, entry.block1);
    if (isOutput(entry.block2)) json["buffer2"] = asJson(block2, entry.block2);
    fmt::print("{}\n", json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

int listExports(bool json) {
    nlohmann::json list = nlohmann::json::array();
    for (const ExportEntry& entry : exportTable()) {
        if (json) {
            list.push_back({{"name", entry.name},
                            {"group", entry.group},
                            {"text", entry.text},
                            {"value", entry.value},
                            {"buffer1", blockKindName(entry.block1)},
                            {"buffer2", blockKindName(entry.block2)},
                            {"result", entry.result}});
            continue;
        }
        std::string uses;
        const auto use = [&](const char* label, const std::string& what) {
            if (!what.empty())
                uses += fmt::format("{}{}: {}", uses.empty() ? "" : "; ", label, what);
        };
        use("text", entry.text);
        use("value", entry.value);
        use("buffer1", blockKindName(entry.block1));
        use("buffer2", blockKindName(entry.block2));
        fmt::print("{:30} {}\n{:30} returns {}\n", entry.name, uses.empty() ? "-" : uses, "",
                   entry.result);
    }
    if (json) fmt::print("{}\n", list.dump(2));
    return 0;
}

int callExport(const CallRequest& request) {
    const ExportEntry* const entry = findExport(request.name);
    if (!entry) {
        fmt::print(stderr, "vek: there is no export {}; did you mean {}?\n", request.name,
                   nearestExport(request.name));
        return 2;
    }
    if ((request.text && entry->text.empty()) || (request.value && entry->value.empty())) {
        fmt::print(stderr, "vek: {} uses no {}\n", entry->name,
                   request.text && entry->text.empty() ? "text" : "value");
        return 2;
    }
    if ((request.out1 && !isOutput(entry->block1)) || (request.out2 && !isOutput(entry->block2))) {
        fmt::print(stderr, "vek: {} fills no {} block\n", entry->name,
                   request.out1 && !isOutput(entry->block1) ? "first" : "second");
        return 2;
    }
    const bool block1Unused = request.in1 && !isInput(entry->block1);
    if (block1Unused || (request.in2 && !isInput(entry->block2))) {
        fmt::print(stderr, "vek: {} reads no {} block\n", entry->name,
                   block1Unused ? "first" : "second");
        return 2;
    }
    Block block1(entry->block1, request.in1,
                 isOutput(entry->block1) ? request.out1.value_or(kOutSize) : 0);
    Block block2(entry->block2, request.in2,
                 isOutput(entry->block2) ? request.out2.value_or(kOutSize) : 0);
    const Library library(request.library);
    std::string text(request.text.value_or(""));
    const float result = library.find(entry->name)(
        request.text ? text.data() : nullptr, request.value.value_or(0.0), block1.data(),
        block1.size(), block2.data(), block2.size(), nullptr);
    (request.json ? printJson : print)(*entry, result, block1, block2);
    return 0;
}
