// stockverify script: runs scenario files against the show targets this program has.
#include "app/Command.h"
#include "app/ProgramFolder.h"
#include "hosts/script/Runner.h"
#include "module/frame/Module.h"
#include "module/frame/clsStockVerification.h"
#include "services/Context.h"
#include "services/CreateObject.h"
#include "vb/Error.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

namespace {

const char *usage =
    "Usage: stockverify script [--home DIR] [--server URI] FILE.scn...\n"
    "\n"
    "Runs scenario files: each sets the session values, shows a target, presses\n"
    "keys, clicks, answers message boxes and checks controls, message boxes and\n"
    "database rows, line by line. The language is described in docs/scenarios.md.\n"
    "\n"
    "A failed file prints FILE:LINE, what was expected and what was found on\n"
    "stderr. For several files a last line \"N passed, N failed\" follows.\n"
    "Exit code: 0 all passed, 1 a scenario failed, 2 a file could not be read or\n"
    "parsed (unknown command, bad syntax, unknown show target).\n"
    "\n"
    "  --home DIR   the program folder of the session (ShopSetting.txt, reports/);\n"
    "               default: the installed share/stockverify, or the source tree\n"
    "               of a build\n"
    "  --server URI a PostgreSQL server, as postgresql://USER@HOST/DATABASE: each\n"
    "               \"db demo\" and \"db empty\" makes a database of its own there\n"
    "               (copied from a template kept on the server) and drops it when\n"
    "               the scenario ends; \"db FILE\" is refused. The user needs the\n"
    "               right to create databases\n"
    "\n"
    "Show targets: \"register\", the stock verification register of the module,\n"
    "shown with the session values the scenario set.\n";

/// The register, shown as a host shows the module: the public class filled
/// in with the session values. Its fault desk keeps its log in the
/// scenario's scratch folder, so that a scenario leaves nothing behind. The
/// module's globals live for the scenario, as they lived for the process: a
/// second show finds what the first left.
void showRegister(const script::ShowContext &show) {
    if (!show.kept) {
        services::Context context(show.screen, show.scratchDir);
        context.connection = show.connection;
        context.companyId = show.session.companyId;
        show.kept = std::make_shared<tqsv2731::Module>(context);
    }
    auto shared = std::static_pointer_cast<tqsv2731::Module>(show.kept);
    shared->AppPath = show.session.homeDir.string();
    tqsv2731::clsStockVerification module(shared);
    module.adocon = show.connection;
    module.strMsgboxCaption = show.session.messageTitle;
    module.intCompanyID = show.session.companyId;
    module.intUserID = show.session.userId;
    module.dtProcessDate = show.session.processDate;
    module.intInterfaceID = show.session.interfaceId;
    module.intGodownID = show.session.godownId;
    module.Show();
}

int run(std::span<const std::string> args) {
    script::RunnerOptions options;
    options.targets = {{"register", showRegister}};
    std::vector<std::string> files;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--home" && i + 1 < args.size()) {
            options.homeDir = args[++i];
        } else if (args[i] == "--server" && i + 1 < args.size()) {
            options.server = args[++i];
        } else if (args[i].starts_with("-")) {
            std::cerr << "stockverify script: unknown option " << args[i] << "\n\n" << usage;
            return 2;
        } else {
            files.push_back(args[i]);
        }
    }
    if (options.homeDir.empty()) {
        try {
            options.homeDir = app::defaultProgramFolder();
        } catch (const vb::Error &e) {
            std::cerr << "stockverify script: " << e.description() << "\n";
            return 2;
        }
    }
    if (files.empty()) {
        std::cerr << "stockverify script: no scenario file given\n\n" << usage;
        return 2;
    }
    return script::Runner(std::move(options)).runFiles(files, std::cout, std::cerr);
}

const app::Registration registration{app::Command{
    "script", "run scenario files (.scn) without a screen and check what they expect", usage, run}};

} // namespace
