// Voicebank: what the windows of the process share: the document with its files, the way that the table edits it, and
// what this run leaves for the next.
#pragma once

#include "app/session.h"
#include "document/document.h"
#include "document/documentediting.h"
#include "document/voicebankfiles.h"

struct Voicebank {
  Voicebank() = default;
  Voicebank(const Voicebank&) = delete;
  Voicebank& operator=(const Voicebank&) = delete;

  VoicebankFiles Files;
  Document Maps{Files};
  DocumentEditing Editing{Maps};
  Session Run{Maps};
};
