// The plug-in records its session, where the configuration names a folder for that (kvd_trace). docs/trace.md tells
// what comes of it.
#pragma once

namespace plugin {

// Before anything is asked: from here on all is kept, until the configuration says whether it is wanted. Nothing where
// this program was built without what hears operations, or somebody else records or plays already.
void beginRecording();
// The configuration is read: what was kept goes into the session's file, or is forgotten. What fails is told, and
// nothing is recorded.
void decideRecording();
// While the function runs nothing stands before the doors of files, programs and the web: what it puts there stands
// below what hears them, so that a refusal is an answer like any other.
void withoutHearing(void (*function)());
// Behind the plug-in's end, or behind a start that failed or isn't recorded: no question is open any more.
void endRecording();
bool isRecording();

}  // namespace plugin
