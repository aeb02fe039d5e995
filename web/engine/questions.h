// What the page asks of the engine, by name. Each question takes the place of a command of the tool: the same
// functions answer, and where the command has --json, the first text of the answer is what it writes.

#ifndef RECALCULO_WEB_QUESTIONS_H
#define RECALCULO_WEB_QUESTIONS_H

#include "headend/headend.h"
#include "message.h"

namespace zarven::web {

/// Answers, or tells the failure: the head then has "failure", the sentence, and "place", a JSON pointer into
/// the head-end where one value is at fault.
Message answer(const Message& question);

// The questions. Texts of a question come first in brackets. Each throws `Failure`.

/// (nothing) "version"; "choices": of what is opened, by option the meaning, the bitrate that is assumed
/// where it is one, the form of a text, and what it is "of": "list", "measured" or "wished"; "terms": what
/// they may be; "reserve": what it means.
Message about(const Message& question);
/// (files) names; modules: true if the last text is a head-end whose modules to take for channel lists, and
/// whose services for measured rates and wish lists without one; choices: by option. A head-end as it is
/// saved, a result or a module as it is: "kind" tells which; of lists, rates and wishes "messages" about
/// them, a few of each kind, "all_messages" where there are more, and "of": which of the three there were,
/// and "lists": the names of the first.
Message open(const Message& question);
/// (head-end or result, another of before) name; reserve, as the option. The result, and the comparison with
/// the other if there is one that runs, but for the order of its steps, with "change": see changes.h;
/// "loads": see loads.h; "warnings" of the head-end; "cautions" by kind, as sentences. Both are on one line;
/// else as the tool writes them.
Message run(const Message& question);
/// (head-end or result, another of before) name; reserve. The whole comparison; "order": see changes.h.
Message compare(const Message& question);
/// (head-end) set. The head-end with these changes, as it is saved.
Message change(const Message& question);
/// (head-end, module) number. The head-end with further modules of that kind.
Message add(const Message& question);
/// (head-end) services: queries, none for all that are left out; width in characters. JSON and text.
Message explain(const Message& question);
/// (head-end, module) most, width. JSON and text.
Message size(const Message& question);
/// (head-end) seconds, or runs for so many states; keep: whether the placement that it has now is to change
/// as little as may be; width; reserve. JSON, text, and the head-end with the choice.
Message choose(const Message& question);
/// (head-end) width. JSON and text.
Message bound(const Message& question);
/// (head-end) streams: whether they fail, too; width. JSON and text.
Message drill(const Message& question);
/// (head-end or result) format: result, channels.conf, csv, page, lists (the tables of the outputs' services,
/// as markup); reserve. The text, and a message where there is one.
Message write(const Message& question);
/// (head-end) terms. "services": the places of those for which they hold.
Message filter(const Message& question);

/// An answer that is a head-end.
Message headend_message(const tool::Headend& headend);

} // namespace zarven::web

#endif
