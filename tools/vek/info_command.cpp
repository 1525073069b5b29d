#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "formats/vek_header.h"
#include "foundation/bx_string.h"
#include "tools/vek/commands.h"
#include "tools/vek/exchange_info.h"

namespace {

constexpr std::size_t kBlocksInText = 100;

const char* verdict(const ExchangeInfo& info) {
    if (info.problems.empty()) return "The file is sound.";
    return info.isExchangeFile ? "The file is damaged." : "The file is not an exchange file.";
}

void print(const std::string& path, const ExchangeInfo& info) {
    fmt::print("{}: {} bytes, {} block{}\n", path, info.fileSize, info.blockCount,
               info.blockCount == 1 ? "" : "s");
    if (info.isExchangeFile) {
        fmt::print("header: \"{}\", {}\n", kVekMagic,
                   info.reservedIsZero ? "28 zero bytes" : "28 bytes that are not all zero");
    }
    if (!info.blocks.empty()) {
        fmt::print("{:>12} {:>6} {:>12} {:>10} {:>10}  {}\n", "offset", "id", "size", "count",
                   "param", "what it is");
    }
    const std::size_t shown = std::min(kBlocksInText, info.blocks.size());
    for (std::size_t i = 0; i < shown; ++i) {
        const auto& block = info.blocks[i];
        fmt::print("{:>12} {:>6} {:>12} {:>10} {:>10}  {}{}\n", block.offset, block.id, block.size,
                   block.count, block.param, blockMeaning(block.id),
                   block.text.empty() ? "" : ": " + block.text);
    }
    if (info.blockCount > shown)
        fmt::print("and {} blocks more; --json lists up to {}\n", info.blockCount - shown,
                   ExchangeInfo::kMostBlocks);
    if (info.hasVertices && info.least[0] <= info.greatest[0]) {
        fmt::print("{} vertices within ({}, {}, {}) to ({}, {}, {})\n", info.vertices,
                   info.least[0], info.least[1], info.least[2], info.greatest[0], info.greatest[1],
                   info.greatest[2]);
    }
    if (info.hasFaces) {
        fmt::print("{} triangles, {} quads; {} degenerate, {} out of range; {} unused vertices\n",
                   info.faces.triangles, info.faces.quads, info.faces.degenerate,
                   info.faces.outOfRange, info.faces.unusedVertices);
    }
    for (const auto& problem : info.problems) {
        fmt::print("at {}: {}\n", problem.offset, problem.sentence);
    }
    fmt::print("{}\n", verdict(info));
}

void printJson(const ExchangeInfo& info) {
    nlohmann::json json = {{"size", info.fileSize},
                           {"reserved_is_zero", info.reservedIsZero},
                           {"block_count", info.blockCount},
                           {"blocks_are_all_listed", info.blockCount == info.blocks.size()}};
    json["blocks"] = nlohmann::json::array();
    for (const auto& block : info.blocks) {
        nlohmann::json one = {
            {"offset", block.offset}, {"id", block.id},       {"meaning", blockMeaning(block.id)},
            {"size", block.size},     {"count", block.count}, {"param", block.param}};
        if (!block.text.empty()) one["text"] = block.text;
        json["blocks"].push_back(one);
    }
    if (info.hasVertices) {
        json["vertices"] = {{"count", info.vertices}, {"min", info.least}, {"max", info.greatest}};
    }
    if (info.hasFaces) {
        json["faces"] = {{"triangles", info.faces.triangles},
                         {"quads", info.faces.quads},
                         {"degenerate", info.faces.degenerate},
                         {"out_of_range", info.faces.outOfRange},
                         {"unused_vertices", info.faces.unusedVertices}};
    }
    json["problems"] = nlohmann::json::array();
    for (const auto& problem : info.problems) {
        json["problems"].push_back({{"offset", problem.offset}, {"what", problem.sentence}});
    }
    json["sound"] = info.problems.empty();
    fmt::print("{}\n", json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace

int showInfo(const std::string& path, bool json) {
    if (BXString(path.c_str()).endsWith(".ma", true)) return showSceneInfo(path, json);
    ExchangeInfo info;
    if (!inspectExchangeFile(path, info)) {
        fmt::print(stderr, "vek: {} cannot be read\n", path);
        return 2;
    }
    if (json) {
        printJson(info);
    } else {
        print(path, info);
    }
    return info.problems.empty() ? 0 : 1;
}
