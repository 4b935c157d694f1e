#include "command_line.h"

#include "batch.h"
#include "escape.h"
#include "listing.h"
#include "names.h"
#include "number_text.h"
#include "settings.h"
#include "translator.h"
#include "usage_error.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <functional>
#include <iostream>
#include <string_view>
#include <unistd.h>

namespace vrn::quantity_tool {
namespace {

void complain(std::string_view message)
{
    std::cerr << "vrn-quantity: " << printable(message) << '\n';
}

int print(const std::string& line)
{
    std::cout << line << '\n';
    return ExitAnswered;
}

int refuse(const std::string& text, const std::string& target)
{
    complain('"' + text + "\" is no quantity of " + target);
    return ExitRefused;
}

/// The arguments of all commands, and the one command that they ask for.
class CommandLine
{
public:
    CommandLine()
    {
        m_app.require_subcommand(0, 1);
        add_settings(m_app);
        add_convert();
        add_parse();
        add_format();
        add_show();
        add_entry();
        add_list();
        add_batch();
    }

    /// Throws CLI::ParseError.
    int run(int argc, char** argv)
    {
        m_app.parse(argc, argv);
        if (!m_command)
            throw UsageError("a command is missing; --help lists them");
        return m_command();
    }

    /// For what CLI11 throws when the arguments ask for help.
    int print_help(const CLI::ParseError& request) { return m_app.exit(request); }

private:
    /// The settings may come before or after the name of the command.
    void add_settings(CLI::App& app)
    {
        app.add_option("--system", m_settings.system, "Unit system, 0 to 9")
            ->type_name("N")
            ->check(CLI::Range(0, 9));
        app.add_option("--locale", m_settings.locale, "Locale of the texts, C if not given")
            ->type_name("NAME");
        app.add_option("--override", m_settings.overrides,
               "How a kind is shown, as KIND:unit=UNIT,precision=N,format=N,label=TEXT")
            ->allow_extra_args(false)
            ->type_name("RULE");
    }

    CLI::App& add_command(
        const std::string& name, const std::string& description, std::function<int()> command)
    {
        CLI::App& app = *m_app.add_subcommand(name, description);
        app.callback([this, command = std::move(command)] { m_command = command; });
        return app;
    }

    void add_kind(CLI::App& app)
    {
        app.add_option("KIND", m_kind, "Id, or name such as GEO_LENGTH")->type_name("")->required();
    }

    void add_text(CLI::App& app)
    {
        app.add_option("TEXT", m_text, "A quantity")->type_name("")->required();
    }

    void add_convert()
    {
        auto& app = add_command("convert", "Show a quantity in another unit", [this] {
            const auto shown = translator().convert(m_text, find_units(m_unit));
            return shown ? print(*shown) : refuse(m_text, "the unit " + m_unit);
        });
        add_settings(app);
        add_text(app);
        app.add_option("UNIT", m_unit, "Id or symbol")->type_name("")->required();
    }

    void add_parse()
    {
        auto& app = add_command("parse", "Print the id and the value of a quantity", [this] {
            const auto quantity = translator().parse(m_text, find_kind(m_kind));
            return quantity
                ? print(std::to_string(quantity->unit_id) + '\t' + exact_text(quantity->value))
                : refuse(m_text, "the kind " + m_kind);
        });
        add_settings(app);
        add_kind(app);
        add_text(app);
    }

    void add_format()
    {
        auto& app = add_command("format", "Show a value in its display unit", [this] {
            const auto value = read_double(m_value);
            if (!value)
                throw UsageError('"' + m_value + "\" is no number");
            return print(translator().format({find_kind(m_kind), *value}));
        });
        add_settings(app);
        add_kind(app);
        app.add_option("VALUE", m_value, "A number in the base scale")->type_name("")->required();
    }

    void add_show()
    {
        auto& app = add_command("show", "Show a quantity in its display unit", [this] {
            const auto shown = translator().show(m_text, find_kind(m_kind));
            return shown ? print(*shown) : refuse(m_text, "the kind " + m_kind);
        });
        add_settings(app);
        add_kind(app);
        add_text(app);
    }

    void add_entry()
    {
        auto& app = add_command(
            "entry", "Print the id and the value of a quantity as engineers write it", [this] {
                const auto entry = translator().entry(m_text, find_kind(m_kind));
                if (entry.state == units::EntryState::Complete) {
                    return print(std::to_string(entry.quantity.unit_id) + '\t'
                        + exact_text(entry.quantity.value));
                }
                complain('"' + m_text + "\", character " + std::to_string(entry.reason.place) + ": "
                    + Translator::sentence(entry.reason));
                return static_cast<int>(ExitRefused);
            });
        add_settings(app);
        add_kind(app);
        add_text(app);
    }

    void add_list()
    {
        auto& app = add_command("list", "Print a table of the unit library", [this] {
            const auto style = m_as_json ? ListStyle::Json : ListStyle::Columns;
            if (m_table == "units")
                list_units(std::cout, style);
            else if (m_table == "kinds")
                list_kinds(std::cout, style);
            else
                list_systems(std::cout, style);
            return ExitAnswered;
        });
        app.add_option("TABLE", m_table, "units, kinds or systems")
            ->type_name("")
            ->required()
            ->check(CLI::IsMember({"units", "kinds", "systems"}));
        app.add_flag("--json", m_as_json, "As JSON");
    }

    void add_batch()
    {
        auto& app = add_command("batch", "Answer each line of standard input", [this] {
            run_batch(translator(), STDIN_FILENO, std::cout);
            return ExitAnswered;
        });
        add_settings(app);
    }

    Translator translator() const
    {
        return Translator(make_context(m_settings), make_locale(m_settings.locale));
    }

    CLI::App m_app{"Reads, converts and writes quantities with units", "vrn-quantity"};
    Settings m_settings;
    std::string m_kind;
    std::string m_text;
    std::string m_unit;
    std::string m_value;
    std::string m_table;
    bool m_as_json = false;
    std::function<int()> m_command;
};

int run_command(int argc, char** argv)
{
    CommandLine command_line;
    try {
        return command_line.run(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
            return command_line.print_help(error);
        throw;
    }
}

} // namespace

int run(int argc, char** argv)
try {
    // Nothing else uses the standard streams, and the output is large.
    std::ios::sync_with_stdio(false);
    // The first write that fails ends the run. Its error message must not flush the output.
    std::cout.exceptions(std::ios::badbit);
    std::cerr.tie(nullptr);
    const int status = run_command(argc, argv);
    std::cout.flush();
    return status;
} catch (const std::ios::failure&) {
    complain("standard output cannot be written");
    return ExitFailed;
} catch (const std::exception& error) {
    complain(error.what());
    return ExitFailed;
}

} // namespace vrn::quantity_tool
