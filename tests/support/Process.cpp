#include "Process.h"

#include "TestFiles.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace tv::test {

namespace {

// Runs the program all[0], looked for on PATH, with its arguments.
ProcessResult Run(std::vector<std::string> all) {
    TempDir dir;
    std::string outPath = (dir.Path() / "out").string();
    std::string errPath = (dir.Path() / "err").string();
    std::vector<char*> argv;
    for (auto& a : all)
        argv.push_back(a.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    pid_t pid = 0;
    int rc = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) throw std::runtime_error("cannot start " + all[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    ProcessResult result;
    result.Status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.Out = ReadBytes(outPath);
    result.Err = ReadBytes(errPath);
    return result;
}

} // namespace

ProcessResult RunTallyview(const std::vector<std::string>& args) {
    return RunTallyviewThrough({}, args);
}

ProcessResult RunTallyviewThrough(const std::vector<std::string>& prefix,
                                  const std::vector<std::string>& args) {
    std::vector<std::string> all = prefix;
    all.push_back(TALLYVIEW_BINARY);
    all.insert(all.end(), args.begin(), args.end());
    return Run(std::move(all));
}

} // namespace tv::test
