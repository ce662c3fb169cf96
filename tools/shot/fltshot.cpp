// Draws OpenFlight databases into a picture, without a window or an X server.

#include "shot/ContactSheet.h"
#include "shot/EglOffscreen.h"
#include "shot/Shot.h"
#include "shot/ShotOptions.h"
#include "support/JpegFile.h"
#include "support/LoaderOptions.h"
#include "support/OutputFile.h"
#include "support/PngFile.h"
#include "support/Program.h"
#include "support/SceneMessages.h"
#include "support/ToolError.h"

#include "loader/FltLoadError.h"

#include <Inventor/nodes/SoSeparator.h>
#include <string>

namespace
{

std::string lastPartOf(std::string const& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// What is wrong with a database, without its name, which stands below.
std::string reasonIn(std::string const& message, std::string const& database)
{
    std::string const beginning = database + ": ";
    return message.compare(0, beginning.size(), beginning) == 0 ? message.substr(beginning.size()) : message;
}

/// Draws all databases onto one sheet.
/// @param code becomes that of a failure if one of them can't be drawn
Picture takeSheet(Program const& program, Shot& shot, ShotOptions const& options, ExitCode& code)
{
    ContactSheet::Layout layout;
    layout.count = static_cast<int>(options.inputs.size());
    layout.columns = options.columns;
    layout.width = options.style.width;
    layout.height = options.style.height;
    layout.isTransparent = options.style.isTransparent;
    ContactSheet sheet(layout);
    for (std::string const& input : options.inputs) {
        auto const addProblem = [&](std::exception const& problem) {
            program.error(problem.what());
            sheet.addProblem(reasonIn(problem.what(), input), lastPartOf(input));
            code = ExitCode::failed;
        };
        try {
            sheet.add(shot.take(input), lastPartOf(input));
        } catch (ToolError const& problem) {
            if (problem.exitCode == ExitCode::wrongUsage)
                throw;
            addProblem(problem);
        } catch (FltLoadError const& problem) {
            addProblem(problem);
        }
    }
    return sheet.picture();
}

void write(Picture const& picture, ShotOptions const& options, Shot const& shot)
{
    OutputFile output(options.output, shot.keptFiles(), options.existing);
    if (output.isTerminal())
        throw ToolError("a picture would upset the terminal. Give -o a file.", ExitCode::wrongUsage);
    std::string const problem =
        options.isJpeg() ? writeJpeg(picture, output.stream()) : writePng(picture, output.stream());
    if (!problem.empty())
        throw ToolError(options.output + ": cannot write: " + problem + ". Choose another size.");
    output.commit();
}

ExitCode shoot(Program const& program, ShotOptions& options, LoaderOptions const& loaderOptions)
{
    options.check();
    ExitCode code = program.reported(options.problems);
    if (options.inputs.empty())
        return code;
    if (std::string const problem = OutputFile::problemOfReplacing(options.output);
        options.existing == OutputFile::Existing::keep && !problem.empty())
        throw ToolError(problem);
    if (options.inputs.size() > 1 && loaderOptions.hasNamedLog())
        throw UsageError("one --log can't hold the listings of several databases. Give it without a name");
    EglOffscreen::install();
    SoSeparator::setNumRenderCaches(0); // no picture is drawn twice
    SceneMessages const messages(program);
    if (char const* problem = EglOffscreen::missing())
        throw ToolError(problem);
    Shot shot(program, options, loaderOptions, messages);
    Picture const picture =
        options.isSheet() ? takeSheet(program, shot, options, code) : shot.take(options.inputs.front());
    write(picture, options, shot);
    return code;
}

} // namespace

int main(int argc, char** argv)
{
    Program program(ShotOptions::description());
    ShotOptions options(program);
    LoaderOptions const loaderOptions(program);
    return program.run(argc, argv, [&] { return shoot(program, options, loaderOptions); });
}
