// `zol`: reads mine-planning data and tells what is in it.

#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include "api/zolExportedApi_ReadOnly.h"
#include "tools/zol/call_log.h"
#include "tools/zol/command_line.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/open_model.h"
#include "tools/zol/output.h"

namespace {

using namespace zol::tool;

int run(const CommandLine& command_line) {
    if (!command_line.action) return kGood;
    const CallLog log(command_line.log_file);
    Output output;
    const int code = command_line.action(output);
    output.Flush();
    return code;
}

int fail(int code, const std::string& text) {
    std::fprintf(stderr, "zol: %s\n", text.c_str());
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    // A reader that goes away shows as a failed write, so that all is tidied up.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const CommandLine command_line = parse_command_line(argc, argv);
        turn_diagnostics_on();
        ZOL_API_Init();
        return run(command_line);
    } catch (const UsageError& error) {
        return fail(kWrongUse, error.what());
    } catch (const WriteFailure& failure) {
        return failure.IsQuiet() ? kUnwritable : fail(kUnwritable, failure.what());
    } catch (const ReadFailure& failure) {
        return fail(kUnreadable, failure.what());
    } catch (const std::bad_alloc&) {
        return fail(kUnreadable, "there is not enough memory for this.");
    } catch (const std::exception& error) {
        return fail(kUnreadable, error.what());
    }
}
