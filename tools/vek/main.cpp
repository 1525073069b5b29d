// vek: plays the host for people who write macros or connect an application.

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <exception>

#include "tools/vek/commands.h"
#include "tools/vek/library.h"
#include "tools/vek/shipped_apps.h"

int main(int argc, char** argv) {
    CLI::App app(
        "Plays the host: calls the library's exports, runs macros, looks into exchange files. "
        "Makes "
        "the shared tree and checks it.");
    app.name("vek");
    app.set_version_flag("--version", "vek " VEK_VERSION);
    app.footer(
        "Exit status: 0 fine; 1 a macro failed, a file is damaged or something is wrong with the "
        "tree; 2 it could not be done.");
    app.require_subcommand(1);
    int status = 0;
    bool json = false;
    const auto withJson = [&](CLI::App* command) {
        command->add_flag("--json", json, "Print JSON");
    };

    CLI::App* const exports = app.add_subcommand("exports", "List the library's exports");
    withJson(exports);
    exports->callback([&] { status = listExports(json); });

    CallRequest request;
    request.library = Library::defaultPath();
    CLI::App* const call = app.add_subcommand(
        "call", "Call one export in a library loaded for it; run keeps its state over many calls");
    withJson(call);
    call->add_option("name", request.name, "The export")->required();
    call->add_option("--text", request.text, "The text argument");
    call->add_option("--value", request.value, "The number argument");
    call->add_option("--in1", request.in1, "What to put into the first block");
    call->add_option("--in2", request.in2, "What to put into the second block");
    const auto size = CLI::Range(16, 1 << 24);
    call->add_option("--out1", request.out1, "Size of the first block")->check(size);
    call->add_option("--out2", request.out2, "Size of the second block")->check(size);
    call->add_option("--lib", request.library, "The library")->capture_default_str();
    call->callback([&] {
        request.json = json;
        status = callExport(request);
    });

    std::string script;
    std::vector<std::string> arguments;
    CLI::App* const run = app.add_subcommand("run", "Run a macro written in Lua");
    run->add_option("--lib", request.library, "The library")->capture_default_str();
    run->add_option("script", script, "The macro")->required()->check(CLI::ExistingFile);
    run->prefix_command();
    run->callback([&] { status = runMacro(script, request.library, run->remaining()); });

    std::string file;
    CLI::App* const info =
        app.add_subcommand("info", "Say what an exchange file or a Maya scene holds and lacks");
    withJson(info);
    info->add_option("file", file, "The exchange file, or a scene (.ma)")->required();
    info->callback([&] { status = showInfo(file, json); });

    CLI::App* const tree =
        app.add_subcommand("tree", "Draw the windows of a host that a JSON file describes");
    tree->add_option("file", file, "The description")->required();
    tree->callback([&] { status = showTree(file); });

    std::string apps = shippedAppsFolder();
    CLI::App* const init = app.add_subcommand(
        "init", "Make the shared tree, or what is missing of it; what is there stays as it is");
    withJson(init);
    init->add_option("--apps", apps, "The folder of the target applications that are put into it")
        ->capture_default_str();
    init->callback([&] { status = initTree(apps, json); });

    CLI::App* const check =
        app.add_subcommand("check", "Say what is wrong with the shared tree, and what to do");
    withJson(check);
    check->callback([&] { status = checkSharedTree(json); });

    CLI::App* const validation = app.add_subcommand(
        "validate", "Check a build of the library from outside; what follows goes to vek-validate");
    validation->prefix_command();
    validation->callback([&] { status = validate(validation->remaining()); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    } catch (const std::exception& error) {
        fmt::print(stderr, "vek: {}\n", error.what());
        return 2;
    }
    return status;
}
