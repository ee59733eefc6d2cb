#include "app/DoctorRun.h"

#include <QCoreApplication>

#include <functional>
#include <iostream>
#include <memory>
#include <unistd.h>

#include "app/EcuPort.h"
#include "app/ReplyWriter.h"
#include "app/Session.h"
#include "console/text/Json.h"
#include "core/OneLine.h"
#include "doctor/Doctor.h"
#include "doctor/TrialFindings.h"
#include "platform/FilePreferences.h"
#include "platform/qt/QtPump.h"
#include "platform/qt/QtSerialLine.h"
#include "platform/virtual/MemoryLine.h"
#include "platform/virtual/VirtualPump.h"

namespace korvane::app {

namespace {

using console::Json;
using doctor::Finding;

constexpr int kStep = 50;  // ms

Json jsonOf(const Finding& finding) {
    return Json::Object{{"topic", finding.topic}, {"weight", nameOf(finding.weight)}, {"text", finding.text}};
}

Json jsonOf(const doctor::PortTrial::Asked& asked) {
    Json::Object object{{"baud", asked.baud}, {"fate", nameOf(asked.fate)}};
    if (asked.identity) {
        object.push_back({"version", asked.identity->version / 1000.0});
        object.push_back({"type", asked.identity->type ? Json(*asked.identity->type) : Json()});
    }
    return object;
}

template <class Items>
Json jsonList(const Items& items) {
    Json::Array list;
    for (const auto& item : items) {
        list.push_back(jsonOf(item));
    }
    return list;
}

std::string jsonOf(const doctor::Doctor& doctor, const std::string& port) {
    return console::writeJson(Json::Object{{"port", port},
                                           {"works", doctor.works()},
                                           {"findings", jsonList(doctor.findings())},
                                           {"asked", jsonList(doctor.asked())},
                                           {"verdict", doctor.verdict() ? jsonOf(*doctor.verdict()) : Json()}}) +
           "\n";
}

class Run {
public:
    Run(const Options& options, platform::EventPump& pump, platform::SerialLine& line)
        : options_(options), pump_(pump), doctor_(pump, line) {}

    int run() {
        doctor_.look(*options_.doctor, kListenAt);
        finish();
        tell(doctor_.findings());
        if (doctor_.mayAsk() && maySend()) {
            doctor_.ask();
            finish();
            tellAnswers();
        }
        if (options_.json) {
            output_.write(jsonOf(doctor_, portName()));
        }
        return doctor_.works() && !output_.failed() ? 0 : 1;
    }

private:
    static constexpr int kListenAt = 57600;

    [[nodiscard]] std::string portName() const {
        const int port = *options_.doctor;
        return port == platform::kPortOfPath ? core::onOneLine(options_.ports.at(port)) : "COM" + std::to_string(port);
    }

    void finish() {
        while (doctor_.runs()) {
            pump_.wait(kStep);
        }
    }

    void line(const std::string& text) {
        if (!options_.json) {
            output_.write(text + "\n");
        }
    }

    void tell(const std::vector<Finding>& findings) {
        for (const auto& finding : findings) {
            line(rowOf(finding));
        }
    }

    void tellAnswers() {
        for (const auto& asked : doctor_.asked()) {
            line(lineOf(asked));
        }
        line(rowOf(*doctor_.verdict()));
    }

    bool maySend() {
        if (options_.send) {
            return true;
        }
        line("Nothing has been sent so far. " + std::string(doctor::kBeforeAsking));
        if (::isatty(STDIN_FILENO) == 0 || options_.json) {
            line("Start it with --send to ask the ECU.");
            return false;
        }
        output_.write("Ask the ECU now? [y/N] ");
        std::string answer;
        std::getline(std::cin, answer);
        return answer == "y" || answer == "Y" || answer == "yes";
    }

    const Options& options_;
    platform::EventPump& pump_;
    doctor::Doctor doctor_;
    ReplyWriter output_{STDOUT_FILENO};
};

int runInMemory(const Options& options, platform::EventPump& pump) {
    const auto ecu = options.ecu == "none" ? nullptr : std::make_unique<EcuPort>(ecuSettings(*options.ecu), pump);
    platform::MemoryLine line(pump, ecu.get());
    return Run(options, pump, line).run();
}

}  // namespace

int runDoctor(const Options& options, int& argc, char** argv) {
    if (options.virtualTime) {
        platform::VirtualPump pump(options.now);
        return runInMemory(options, pump);
    }
    const QCoreApplication application(argc, argv);
    platform::QtPump pump;
    if (options.ecu) {
        return runInMemory(options, pump);
    }
    const platform::FilePreferences preferences(preferencesOf(options));
    platform::QtSerialLine line(pump, platform::PortMap(pump, platform::fixedPorts(preferences, options.ports)));
    return Run(options, pump, line).run();
}

}  // namespace korvane::app
