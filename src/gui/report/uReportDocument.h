// The report as a short document: the mission, its figures, the most important events. Black on white.
#pragma once

#include <QTextDocument>
#include <memory>

#include "shell/uShownMission.h"

std::unique_ptr<QTextDocument> MakeReport(const TShownMission& mission);
