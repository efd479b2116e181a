// The figures of the program as a whole: its start-up, timed as a child process against a
// minimal Qt Widgets program, and the reading of a long transcription against opening a scan.
#include "ProgramBenchmarks.h"

#include "IterationClock.h"

#include "common/TranscriptionWork.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <filesystem>

namespace bench {

namespace {

// The settings and run-time folders of the children: their own, so that the user's settings
// are neither read nor written.
QProcessEnvironment ChildEnvironment(const QTemporaryDir& home) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.path());
    return environment;
}

void StartUp(benchmark::State& state, const QString& program) {
    const QTemporaryDir home;
    const QProcessEnvironment environment = ChildEnvironment(home);
    IterationClock clock(state);
    for (auto _ : state) {
        QProcess child;
        child.setProcessEnvironment(environment);
        // The offscreen platform's notes would interleave with the figures.
        child.setStandardOutputFile(QProcess::nullDevice());
        child.setStandardErrorFile(QProcess::nullDevice());
        clock.Start();
        child.start(program, {});
        const bool ended = child.waitForFinished(-1);
        clock.Stop();
        if (!ended || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
            state.SkipWithError("the child process did not show its window");
            break;
        }
    }
}

void TranscriptionOf1000Lines(benchmark::State& state) {
    const std::string path = WriteTranscription(1000);
    IterationClock clock(state);
    for (auto _ : state) {
        clock.Start();
        benchmark::DoNotOptimize(ReadCheckAndReport(path));
        clock.Stop();
    }
    std::filesystem::remove(path);
}

} // namespace

void RegisterProgramBenchmarks() {
    benchmark::RegisterBenchmark("Startup/MinimalWindow", StartUp,
                                 QStringLiteral(TALLYVIEW_MINIMAL_WINDOW))
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("Startup/StartWindow", StartUp,
                                 QStringLiteral(TALLYVIEW_STARTUP_PROBE))
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("Transcription/1000Lines", TranscriptionOf1000Lines)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

} // namespace bench
