#include "runner/RunProgress.h"

#include <algorithm>
#include <ostream>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace ZemDemo {

namespace {

// The width of the terminal, so that the status line never wraps (a wrapped line cannot be rewritten).
std::size_t terminalWidth()
{
    struct winsize size {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 10)
        return size.ws_col;
    return 80;
}

// Cuts `text` to `width` characters, counting UTF-8 sequences as one, so that Russian texts stay whole.
std::string fitWidth(const std::string& text, std::size_t width)
{
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) == 0x80)
            continue;
        if (characters == width)
            return text.substr(0, i);
        ++characters;
    }
    return text;
}

} // namespace

std::string countersText(const ZemTree::TestCounters& counters)
{
    return "ok " + std::to_string(counters.okCount) + ", failed " + std::to_string(counters.failedCount)
           + ", not tested " + std::to_string(counters.notTestedCount);
}

TestVerdict judgeTest(const ZemTree::TestCounters& counters)
{
    if (counters.failedCount > 0)
        return TestVerdict::Failed;
    if (counters.notTestedCount > 0)
        return TestVerdict::Unfinished;
    return TestVerdict::Passed;
}

const char* verdictText(TestVerdict verdict)
{
    switch (verdict) {
    case TestVerdict::Passed:
        return "passed";
    case TestVerdict::Failed:
        return "FAILED";
    case TestVerdict::Unfinished:
        return "unfinished";
    }
    return "";
}

RunProgress::RunProgress(std::ostream& out, std::size_t testCount, bool isTerminal)
    : _out(out), _testCount(testCount), _isTerminal(isTerminal)
{
}

void RunProgress::postStateLine(const std::string& line)
{
    _post({Event::Kind::State, line, {}});
}

void RunProgress::postTestFinished(const std::string& description, const ZemTree::TestCounters& counters)
{
    _post({Event::Kind::TestFinished, description, counters});
}

void RunProgress::postRunFinished()
{
    _post({Event::Kind::RunFinished, "", {}});
}

void RunProgress::_post(Event event)
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _events.push_back(std::move(event));
    }
    _condition.notify_one();
}

bool RunProgress::waitAndPrint(std::chrono::milliseconds timeout)
{
    std::deque<Event> arrived;
    {
        std::unique_lock<std::mutex> lock(_mutex);
        _condition.wait_for(lock, timeout, [this] { return !_events.empty(); });
        arrived.swap(_events);
    }
    // Printing happens outside the lock, so a slow terminal never holds up the worker.
    for (const Event& event : arrived)
        _print(event);
    if (_isTerminal && !arrived.empty() && !_isOver)
        _drawStatus();
    _out.flush();
    return _isOver;
}

void RunProgress::_print(const Event& event)
{
    switch (event.kind) {
    case Event::Kind::State:
        _stateLine = event.text;
        // The empty line only clears a display; a plain log has nothing to clear.
        if (!_isTerminal && !event.text.empty())
            _out << _counterText() << " " << event.text << '\n';
        break;
    case Event::Kind::TestFinished: {
        ++_finished;
        _stateLine.clear();
        const TestVerdict verdict = judgeTest(event.counters);
        _passed += verdict == TestVerdict::Passed ? 1 : 0;
        _failed += verdict == TestVerdict::Failed ? 1 : 0;
        _unfinished += verdict == TestVerdict::Unfinished ? 1 : 0;
        _clearStatus();
        _out << "test " << _finished << "/" << _testCount << " " << verdictText(verdict) << ": " << event.text << " ("
             << countersText(event.counters) << "); so far passed " << _passed << ", failed " << _failed << '\n';
        break;
    }
    case Event::Kind::RunFinished:
        _isOver = true;
        _clearStatus();
        break;
    }
}

std::string RunProgress::_counterText() const
{
    const std::size_t current = std::min<std::size_t>(static_cast<std::size_t>(_finished) + 1, _testCount);
    return "test " + std::to_string(current) + "/" + std::to_string(_testCount);
}

void RunProgress::_drawStatus()
{
    const std::string status = _counterText() + " | passed " + std::to_string(_passed) + ", failed "
                               + std::to_string(_failed) + (_stateLine.empty() ? "" : " | " + _stateLine);
    _out << "\r\033[K" << fitWidth(status, terminalWidth() - 1);
    _isStatusShown = true;
}

void RunProgress::_clearStatus()
{
    if (!_isStatusShown)
        return;
    _out << "\r\033[K";
    _isStatusShown = false;
}

void RunProgress::printNote(const std::string& line)
{
    _clearStatus();
    _out << line << '\n';
    if (_isTerminal && !_isOver)
        _drawStatus();
    _out.flush();
}

void RunProgress::close()
{
    _clearStatus();
    _out.flush();
}

} // namespace ZemDemo
