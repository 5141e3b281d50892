#include "vxshow/mount/frr/FrrConversation.h"

#include "vxshow/mount/frr/FrrDocuments.h"
#include "vxshow/mount/frr/VtyshWords.h"

#include <optional>
#include <utility>

namespace vxshow {

namespace {

void ask(FrrRun const & run, std::vector<FrrQuestion> const & questions, FrrJoin & join) {
    std::vector<std::string> commands;
    commands.reserve(questions.size());
    for (FrrQuestion const & question : questions) {
        commands.push_back(question.command());
    }
    auto printed = run(commands);
    auto const answers = vtyshAnswers(printed.text(), commands);
    for (std::size_t index = 0; index < questions.size(); ++index) {
        // Behind an answer stands the next command's line, which has served its purpose.
        readFrrDocument(questions[index], printed.padded(answers[index]), join);
    }
}

FrrAnswer askOnce(FrrRun const & run, FrrSource const & source, Selection const & selection) {
    FrrJoin join(selection);
    ask(run, firstFrrQuestions(selection), join);
    auto const further = join.further();
    if (!further.empty()) {
        ask(run, further, join);
    }
    return join.finished(source);
}

} // namespace

FrrAnswer converse(FrrRun const & run, FrrSource const & source, Selection const & selection) {
    std::optional<FrrAnswer> answer;
    try {
        for (unsigned attempt = 0; attempt < mostFrrAttempts && !(answer && answer->fits);
             ++attempt) {
            answer = askOnce(run, source, selection);
        }
    } catch (AnswerError const & error) {
        throw SourceFailure(std::string("broken answer: ") + error.what());
    } catch (FrrTimeOver const &) {
        if (!answer) {
            throw;
        }
    }
    return std::move(*answer);
}

} // namespace vxshow
