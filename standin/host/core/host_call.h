// The common part of all host operations: results without a running host program, failures and
// exceptions set by scripts, the trace.
#pragma once

#include "control.h"
#include "core/call_text.h"
#include "core/faults.h"
#include "core/session.h"

namespace standin {

// A query, which is not traced. Returns `fallback` if no host is running or the call is set to
// fail.
template <class Answer, class Action>
Answer question(std::string_view name, Answer fallback, Action answer)
{
    if (!isRunning())
        return fallback;
    switch (takeOutcome(name)) {
    case Outcome::raises:
        raiseHostException();
    case Outcome::fails:
        return fallback;
    case Outcome::works:
        break;
    }
    return answer();
}

// An operation with an effect and a result: traced as `text` with its result after it has ended.
// Returns `fallback` if no host is running; if the call is set to fail, runs `failure` instead.
template <class Result, class Action, class Failure>
Result act(std::string_view name, const std::wstring& text, Result fallback, Action action,
           Failure failure)
{
    if (!isRunning())
        return fallback;
    const Outcome outcome = takeOutcome(name);
    if (outcome == Outcome::raises) {
        trace(text + L" raised");
        raiseHostException();
    }
    Result result = outcome == Outcome::fails ? failure() : action();
    trace(text + L" -> " + callText(result));
    return result;
}

// The same for an operation that does nothing and returns `fallback` if it is set to fail.
template <class Result, class Action>
Result act(std::string_view name, const std::wstring& text, Result fallback, Action action)
{
    return act(
        name, text, fallback, action, [&] { return fallback; });
}

// The same for an operation without a result.
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
