// Voicebank: what the windows of the process share: the document with its files, and the way that the table edits it.
#pragma once

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
};
