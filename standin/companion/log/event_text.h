// The event log, `sys\companion.log`: UTF-8 without a byte-order mark, one event a line, each line
// ended by a line feed.
//
//   2026-11-21 10:11:12.345 sent id=17 host=4711 file="C:\TORVA\ZEM\work\bracket.mcam"
//   2026-11-21 10:11:12.428 taken id=17 host=4711 after=83.1ms request=open
//
// Date and time (local, milliseconds), a blank, the event, then its fields, each with a blank in
// front: a number as it is, a text between double quotes with nothing escaped. A control character
// in a text is written as a blank, so that an event is always one line.
//
//   started          folder=TEXT pid=N               the one running instance came up
//   stopped                                          it ends; always its last line
//   command          text=TEXT                       arguments, its own or of a second start
//   not-understood   text=TEXT                       arguments that are none of the known ones
//   library          items=N                         the index was read
//   library-line-bad line=N                          this line of the index was left out
//   host-found       host=N title=TEXT               a host window with the add-in came up
//   host-gone        host=N
//   check-out        file=TEXT                       the add-in asks for a file
//   commit           file=TEXT [id=N] [from=NAME]    the add-in hands a file back: by a record in
//                                                    the request file NAME, else on the command
//                                                    line
//   version          name=TEXT version=N number=N picture=yes|no
//                                                    it is in the library now, as this version
//   new-part         number=N name=TEXT file=TEXT    and before that became a part of its own
//   commit-failed    file=TEXT id=N reason=TEXT      it is not, and will not be; hand it in again
//   commit-waits     file=TEXT id=N reason=TEXT      it will be, when what hinders it is over
//   commit-known     name=TEXT version=N number=N picture=yes|no
//                                                    an earlier process stored it and then ended
//   commits-left     from=NAME bytes=N               an ended process had not taken these requests
//   commit-skipped   from=NAME offset=N bytes=N file=TEXT
//                                                    these bytes of a request file are no record;
//                                                    they were copied to this file
//   picture-kept     file=TEXT                       the screen picture of a failed commit
//   about            parent=N                        the add-in asks for the about window
//   kept             id=N file=TEXT                  changed work that was moved aside
//   settings         id=N host=N file=TEXT           machine settings written for a request
//   sent             id=N host=N file=TEXT           an open request written
//   new-file         id=N host=N                     a new-file request written
//   check-in         id=0 host=N name=TEXT           a check-in written
//   taken            id=N host=N after=X.Xms request=open|new-file|check-in
//                    the host emptied its command file; X.X milliseconds since it was closed
//   not-taken        id=N host=N after=X.Xms request=…    it still holds the request; given up
//   lost             id=N host=N after=X.Xms request=…    it went away with the request
//   not-sent         id=N host=N reason=TEXT request=…    nothing was written; given up
//   refused          reason=TEXT                     a word or button that cannot be carried out
//   port-taken       port=4559 error=N               nothing can be received: another program has
//                                                    the port, or N tells what else went wrong
//   port-open        port=4559                       it has ended, lines are received from now on
//   line             bytes=N hex=HEX text=TEXT       one connection: all its bytes, and their text
//                    in the ANSI code page without the line feed at its end
//   setup-sheet      id=N file=TEXT                  this line says that a setup sheet lies ready
//   setup-sheet-unreadable id=N file=TEXT            that file is missing or larger than 1 MiB
//   commit-notice    id=N file=TEXT                  this line says that a file comes back
//   tool-data        id=N                            this line says that tool data lies ready
//   tool             id=N number=N type=N diameter=X operation=N comment=TEXT
//                    a tool of that data: request id, tool number and type, its diameter with up
//                    to six digits, and the id of the operation that uses it
//   tool-record-bad  line=N                          this line of it is no record of a tool; the
//                                                    first 20 such lines
//   tool-records-bad lines=N                         so many more lines of it are none
//   tool-data-unreadable file=TEXT                   that file is missing or larger than 1 MiB
//   nc-queue         file=TEXT                       this line says that an NC queue lies ready
//   nc-program       number=N file=TEXT bytes=N group=TEXT
//                    a program of it, with its NC-path number; bytes=-1 when it is missing, -2 for
//                    a path that starts with two slashes: other computers are not asked
//   nc-queue-line-bad line=N                         this line of the queue names no program; the
//                                                    first 20 such lines
//   nc-queue-lines-bad lines=N                       so many more lines of it name none
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
// ` request=open`; the value has no blanks
std::wstring wordField(std::wstring_view name, std::wstring_view value);

// The line with its line feed. `fields` is what the functions above give, one after the other.
std::wstring eventLine(const Moment& moment, std::wstring_view event, std::wstring_view fields);

// `10:11:12.345`, for the window.
std::wstring timeOfDay(const Moment& moment);

// What the window calls an event: "Sent to host" for `sent`. An event it has no words for stays as
// it is.
std::wstring eventTitle(std::wstring_view event);

} // namespace companion
