// The report as a document of one page: the mission, its figures, the most important events. Black on white.
#pragma once

#include <QTextDocument>
#include <memory>

#include "shell/uShownMission.h"

std::unique_ptr<QTextDocument> MakeReport(const TShownMission& mission);
