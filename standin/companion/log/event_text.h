// The event log, `sys\companion.log`: UTF-8 without a byte-order mark, one event a line, each line
// ended by a line feed.
//
//   2026-11-21 10:11:12.345 sent id=17 host=4711 file="C:\TORVA\ZEM\work\bracket.mcam"
//   2026-11-21 10:11:12.428 taken id=17 host=4711 after=83.1ms request=open
//
// Local date and time with milliseconds, a space, the event, then its fields, each after a space: a
// number as it is, a text in double quotes without escaping. A control character in a text is
// written as a space, so that an event is always one line.
//
//   started          folder=TEXT pid=N               the running instance has started
//   stopped                                          it has ended; always the last line
//   command          text=TEXT                       arguments of this or a second start
//   not-understood   text=TEXT                       unknown arguments
//   library          items=N                         the index was read
//   library-line-bad line=N                          this line of the index was ignored
//   host-found       host=N title=TEXT               a host with the add-in was found
//   host-gone        host=N
//   check-out        file=TEXT                       the add-in requests a file
//   commit           file=TEXT [id=N] [from=NAME]    the add-in commits a file: with a record in
//                                                    the commit file NAME, else on the command
//                                                    line
//   version          name=TEXT version=N number=N picture=yes|no
//                                                    it is now in the library as this version
//   new-part         number=N name=TEXT file=TEXT    before that, it became a new part
//   commit-failed    file=TEXT id=N reason=TEXT      it is not in the library and will not be
//   commit-waits     file=TEXT id=N reason=TEXT      it will be stored when REASON is resolved
//   commit-known     name=TEXT version=N number=N picture=yes|no
//                                                    an earlier process had already stored it
//   commits-left     from=NAME bytes=N               an ended process had not taken these bytes
//   commit-skipped   from=NAME offset=N bytes=N file=TEXT
//                                                    these bytes of a commit file are not a
//                                                    record; they were copied to this file
//   picture-kept     file=TEXT                       the screen picture of a failed commit
//   about            parent=N                        the add-in requests the about window
//   kept             id=N file=TEXT                  a changed work file that was moved aside
//   settings         id=N host=N file=TEXT           machine settings written for a request
//   sent             id=N host=N file=TEXT           an open request written
//   new-file         id=N host=N                     a new-file request written
//   check-in         id=0 host=N name=TEXT           a check-in written
//   taken            id=N host=N after=X.Xms request=open|new-file|check-in
//                    the host emptied its command file X.X milliseconds after it was closed
//   not-taken        id=N host=N after=X.Xms request=…
//                    the request is still in the file; given up
//   lost             id=N host=N after=X.Xms request=…
//                    the file disappeared with the request
//   not-sent         id=N host=N reason=TEXT request=…    nothing was written; given up
//   refused          reason=TEXT                     a command that cannot be carried out
//   port-taken       port=4559 error=N               nothing can be received: N is the error, for
//                                                    example when another program uses the port
//   port-open        port=4559                       the port is open now, notices are received
//   line             bytes=N hex=HEX text=TEXT       one connection: all bytes, and their text
//                    in the ANSI code page without the line feed at the end
//   setup-sheet      id=N file=TEXT                  this notice announces a setup sheet
//   setup-sheet-unreadable id=N file=TEXT            that file is missing or larger than 1 MiB
//   commit-notice    id=N file=TEXT                  this notice announces a commit
//   tool-data        id=N                            this notice announces tool data
//   tool             id=N number=N type=N diameter=X operation=N comment=TEXT
//                    a tool of that data: request id, tool number and type, its diameter with up
//                    to six digits, and the id of the operation that uses it
//   tool-record-bad  line=N                          this line is not a tool record; logged for the
//                                                    first 20 such lines
//   tool-records-bad lines=N                         this many more lines are not tool records
//   tool-data-unreadable file=TEXT                   that file is missing or larger than 1 MiB
//   nc-queue         file=TEXT                       this notice announces an NC queue
//   nc-program       number=N file=TEXT bytes=N group=TEXT
//                    one of its programs; number: NC path; bytes=-1 when it is missing, -2 for
//                    a path that starts with two slashes: other computers are not contacted
//   nc-queue-line-bad line=N                         this line names no program; logged for the
//                                                    first 20 such lines
//   nc-queue-lines-bad lines=N                       this many more lines name no program
//   nc-queue-unreadable file=TEXT                    that file is missing or larger than 1 MiB
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace companion {

struct Moment {
    int year, month, day, hour, minute, second, millisecond;
};

// ` id=17`
std::wstring numberField(std::wstring_view name, std::int64_t value);
// ` file="C:\a b.mcam"`
std::wstring textField(std::wstring_view name, std::wstring_view value);
// ` after=83.1ms`
std::wstring millisecondsField(std::wstring_view name, double milliseconds);
// ` hex=544F0A`
std::wstring bytesField(std::wstring_view name, std::string_view bytes);
// ` request=open`; the value contains no spaces
std::wstring wordField(std::wstring_view name, std::wstring_view value);

// The line with its line feed. `fields`: the concatenated results of the functions above.
std::wstring eventLine(const Moment& moment, std::wstring_view event, std::wstring_view fields);

// `10:11:12.345`, for the window.
std::wstring timeOfDay(const Moment& moment);

// The title of an event in the window: "Sent to host" for `sent`. An unknown event is not changed.
std::wstring eventTitle(std::wstring_view event);

} // namespace companion
