#include "link/Link.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>

// The TI headers use C's `restrict`.
#define restrict __restrict__
#include <tilp2/ticables.h>
#include <tilp2/ticalcs.h>
#include <tilp2/tifiles.h>
#undef restrict

#include "formats/Sending.h"

namespace shd::link {

namespace {

// libticables' and libticalcs' error numbers this program tells apart.
constexpr int kReadTimeout = 4, kWriteTimeout = 6, kAborted = 256, kNotReady = 257;

// The libraries report through GLib's log, which would print on the
// converter's standard error and the editor's terminal; what went wrong
// reaches the user through the error numbers instead.
void Quiet(const gchar*, GLogLevelFlags, const gchar*, gpointer) {}

void Ready() {
    static std::once_flag once;
    std::call_once(once, [] {
        for (const char* domain : {"ticables", "tifiles", "ticalcs", "ticonv"})
            g_log_set_handler(domain, static_cast<GLogLevelFlags>(G_LOG_LEVEL_MASK | G_LOG_FLAG_FATAL), Quiet, nullptr);
        ticables_library_init();
        tifiles_library_init();
        ticalcs_library_init();
    });
}

// The first line of a library's message, without its "Msg: ".
std::string LibraryMessage(int error) {
    char* text = nullptr;
    if (error < kAborted ? ticables_error_get(error, &text) : ticalcs_error_get(error, &text)) return "error " + std::to_string(error);
    std::string line = text ? text : "";
    if (error < kAborted) ticables_error_free(text);
    else ticalcs_error_free(text);
    line = line.substr(0, line.find('\n'));
    if (line.starts_with("Msg: ")) line.erase(0, 5);
    return line;
}

std::string Describe(int error) {
    switch (error) {
    case 0: return {};
    case kAborted: return kSendCancelledMessage;
    case kReadTimeout:
    case kWriteTimeout:
    case kNotReady: return kNoAnswerMessage;
    default: return "Sending failed: " + LibraryMessage(error);
    }
}

// Cables of the traditional link protocol, which is the only one a TI-83
// speaks, and the two virtual links of emulators.
bool ReachesTi83(int model) {
    switch (model) {
    case CABLE_GRY:
    case CABLE_BLK:
    case CABLE_PAR:
    case CABLE_SLV:
    case CABLE_VTI:
    case CABLE_TIE: return true;
    default: return false;
    }
}

// libticalcs reports progress through callbacks without a context pointer;
// the transfer running on this thread is the one they belong to.
struct Transfer {
    const Progress* progress;
    CalcUpdate* update;
};
thread_local Transfer* current = nullptr;

void OnProgress() {
    if (!current || !*current->progress) return;
    const CalcUpdate& u = *current->update;
    if (!(*current->progress)(std::min(u.cnt2, u.max2), u.max2)) current->update->cancel = 1;
}

struct CableDeleter {
    void operator()(CableHandle* h) const { ticables_handle_del(h); }
};
struct CalcDeleter {
    void operator()(CalcHandle* h) const {
        ticalcs_cable_detach(h);
        ticalcs_handle_del(h);
    }
};
struct ContentDeleter {
    void operator()(FileContent* c) const { tifiles_content_delete_regular(c); }
};

}  // namespace

std::string CableName(const Cable& cable) {
    Ready();
    return std::string(ticables_model_to_string(static_cast<CableModel>(cable.model))) + ":" + std::to_string(cable.port);
}

std::optional<Cable> CableByName(std::string_view name) {
    Ready();
    Cable cable;
    const auto colon = name.find(':');
    if (colon != std::string_view::npos) {
        const std::string_view port = name.substr(colon + 1);
        if (port.size() != 1 || port[0] < '1' || port[0] > '4') return std::nullopt;
        cable.port = port[0] - '0';
    }
    cable.model = ticables_string_to_model(std::string(name.substr(0, colon)).c_str());
    if (!ReachesTi83(cable.model)) return std::nullopt;
    return cable;
}

std::vector<Cable> FindCables() {
    Ready();
    std::vector<Cable> found;
    int** table = nullptr;
    ticables_probing_do(&table, 5, PROBE_ALL);  // fills the table even when it finds nothing
    if (!table) return found;
    for (int model = CABLE_NUL + 1; model < CABLE_MAX; ++model)
        for (int port = PORT_1; port < PORT_MAX; ++port)
            if (ReachesTi83(model) && table[model] && table[model][port]) found.push_back({model, port});
    ticables_probing_finish(&table);
    return found;
}

std::string SendProgramFile(const Cable& cable, std::string_view programFile, const Progress& progress, int timeout) {
    const std::optional<Variable> variable = VariableOfProgramFile(programFile);
    if (!variable) return "Sending failed: this is not a TI-83 program file.";
    Ready();
    CalcUpdate update{};  // outlives the handle that points to it
    std::unique_ptr<CableHandle, CableDeleter> wire(
        ticables_handle_new(static_cast<CableModel>(cable.model), static_cast<CablePort>(cable.port)));
    std::unique_ptr<CalcHandle, CalcDeleter> calc(ticalcs_handle_new(CALC_TI83));
    if (!wire || !calc) return "The link cable " + CableName(cable) + " cannot be used here.";
    ticables_options_set_timeout(wire.get(), static_cast<unsigned>(timeout));
    if (const int error = ticalcs_cable_attach(calc.get(), wire.get()))
        return "The link cable " + CableName(cable) + " could not be opened: " + LibraryMessage(error);

    std::unique_ptr<FileContent, ContentDeleter> content(tifiles_content_create_regular(CALC_TI83));
    VarEntry* entry = tifiles_ve_create_alloc_data(variable->data.size());
    entry->type = static_cast<uint8_t>(variable->type);
    entry->size = static_cast<uint32_t>(variable->data.size());
    std::memcpy(entry->data, variable->data.data(), variable->data.size());
    std::memcpy(entry->name, variable->name.data(), std::min(variable->name.size(), sizeof entry->name - 1));
    tifiles_content_add_entry(content.get(), entry);

    update.start = update.stop = update.label = [] {};
    update.refresh = update.pbar = OnProgress;
    Transfer transfer{&progress, &update};
    current = &transfer;
    ticalcs_update_set(calc.get(), &update);
    const int error = ticalcs_calc_send_var(calc.get(), MODE_SEND_ONE_VAR, content.get());
    current = nullptr;
    return Describe(error);
}

}  // namespace shd::link
