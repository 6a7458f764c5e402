// The frame around each host operation: null and false while no host program runs, told failures
// and exceptions, the trace.
#pragma once

#include "control.h"
#include "core/call_text.h"
#include "core/faults.h"
#include "core/session.h"

namespace standin {

// A pure question: not traced. `neutral` is the answer where no host runs and when told to fail.
template <class Answer, class Action>
Answer question(std::string_view name, Answer neutral, Action answer)
{
    if (!isRunning())
        return neutral;
    switch (takeOutcome(name)) {
    case Outcome::raises:
        raiseHostException();
    case Outcome::fails:
        return neutral;
    case Outcome::works:
        break;
    }
    return answer();
}

// An operation that acts and gives something: traced as `text` with its result once it ended.
// `neutral` is the result where no host runs; told to fail, it does and gives what `failure` does.
template <class Result, class Action, class Failure>
Result act(std::string_view name, const std::wstring& text, Result neutral, Action action,
           Failure failure)
{
    if (!isRunning())
        return neutral;
    const Outcome outcome = takeOutcome(name);
    if (outcome == Outcome::raises) {
        trace(text + L" raised");
        raiseHostException();
    }
    Result result = outcome == Outcome::fails ? failure() : action();
    trace(text + L" -> " + callText(result));
    return result;
}

// The same for one that does nothing when told to fail, and gives `neutral`.
template <class Result, class Action>
Result act(std::string_view name, const std::wstring& text, Result neutral, Action action)
{
    return act(
        name, text, neutral, action, [&] { return neutral; });
}

// The same for an operation that gives nothing.
template <class Action>
void act(std::string_view name, const std::wstring& text, Action action)
{
    if (!isRunning())
        return;
    const Outcome outcome = takeOutcome(name);
    if (outcome == Outcome::raises) {
        trace(text + L" raised");
        raiseHostException();
    }
    if (outcome == Outcome::works)
        action();
    trace(text);
}

} // namespace standin
