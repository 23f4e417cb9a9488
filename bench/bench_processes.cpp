// Times whole processes side by side, as a user's script meets them: `pemlo-cli
// classify` against the tests' scalar oracle built into an executable with the same
// reader and the same output (pemlo-oracle-classify), on the worst case (4000 readings
// down to 3276 m, 32,761 intervals) and on a real sounding of 1,218 readings; and on
// that sounding against `wc -l`, the cost of starting a process and reading the file;
// and `pemlo-cli sbt` against `pemlo-cli classify` on the largest import there is; and
// `pemlo-cli log` (its pages and the chart) against `pemlo-cli report` (one results page)
// on the real sounding, both drawing a PDF through Qt.
// The two commands of a pair run in turn, A B A B ..., and the figures are medians of
// wall-clock time with standard output thrown away.
//   bench_processes [runs]
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

extern char** environ;

namespace {

namespace fs = std::filesystem;

// One run of the command, stdout and stderr to /dev/null: its wall time in ms.
double RunOnce(const std::vector<std::string>& command)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    std::vector<char*> argv;
    for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    if (posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) return -1;
    int status = 0;
    waitpid(pid, &status, 0);
    const auto end = std::chrono::steady_clock::now();
    posix_spawn_file_actions_destroy(&actions);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return -1;
    return std::chrono::duration<double, std::milli>(end - start).count();
}

double Median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

struct Pair {
    const char* what;
    std::vector<std::string> a, b;
    double target;  // A / B at most
};

void Compare(const Pair& pair, int runs)
{
    std::vector<double> a, b, ratios;
    RunOnce(pair.a);  // warm the page cache and the loader
    RunOnce(pair.b);
    for (int i = 0; i < runs; ++i) {
        const double ta = RunOnce(pair.a);
        const double tb = RunOnce(pair.b);
        if (ta < 0 || tb < 0) {  // say which, so that it can be run by hand
            std::string failed;
            for (const std::string& word : ta < 0 ? pair.a : pair.b) failed += " " + word;
            std::printf("%-58s  failed (exit status not 0):%s\n", pair.what, failed.c_str());
            return;
        }
        a.push_back(ta);
        b.push_back(tb);
        ratios.push_back(ta / tb);
    }
    std::printf("%-58s %8.2f %8.2f %7.3f %7.2f\n", pair.what, Median(a), Median(b), Median(ratios), pair.target);
}

// 4000 readings every 0.81905 m down to 3276.2 m, 10 title lines, SI.
std::string WriteWorstCase()
{
    const fs::path path = fs::temp_directory_path() / ("pemlo-worst-" + std::to_string(getpid()) + ".txt");
    std::ofstream out(path, std::ios::binary);
    for (int i = 1; i <= 10; ++i) out << "# title line " << i << "\r\n";
    char line[64];
    for (int i = 1; i <= 4000; ++i) {
        std::snprintf(line, sizeof line, "%.5f,%.3f,%.4f\r\n", i * 0.81905, 2 + 15.0 * ((i * 37) % 101) / 101,
                      0.01 + 0.2 * ((i * 53) % 97) / 97);
        out << line;
    }
    return path.string();
}

// A GEF import of 32,766 readings every 5 mm with u2, the area ratio and the
// groundwater stated: the largest that classify goes through (at 32,767 its 16-bit
// running index overflows after the last reading, exit 4), so that both commands of
// the pair do their whole work.
std::string WriteLargestImport()
{
    const fs::path path = fs::temp_directory_path() / ("pemlo-largest-" + std::to_string(getpid()) + ".gef");
    std::ofstream out(path, std::ios::binary);
    out << "#GEFID= 1, 1, 0\r\n#COLUMN= 4\r\n#COLUMNINFO= 1, m, penetration length, 1\r\n"
           "#COLUMNINFO= 2, MPa, qc, 2\r\n#COLUMNINFO= 3, MPa, fs, 3\r\n#COLUMNINFO= 4, MPa, u2, 6\r\n"
           "#MEASUREMENTVAR= 3, 0.8, -, area ratio\r\n#MEASUREMENTVAR= 14, 1.5, m, groundwater\r\n"
           "#REPORTCODE= GEF-CPT-Report, 1, 1, 2\r\n#EOH=\r\n";
    char line[80];
    for (int i = 1; i <= 32766; ++i) {
        std::snprintf(line, sizeof line, "%.3f %.3f %.4f %.4f\r\n", i * 0.005, 0.5 + 15.0 * ((i * 37) % 101) / 101,
                      0.005 + 0.1 * ((i * 53) % 97) / 97, 0.01 * i * 0.005 + 0.05 * ((i * 29) % 13) / 13);
        out << line;
    }
    return path.string();
}

}  // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 21;
    const fs::path here = fs::read_symlink("/proc/self/exe").parent_path();
    const std::string cli = (here.parent_path() / "src" / "cli" / "pemlo-cli").string();
    const std::string oracle = (here / "pemlo-oracle-classify").string();
    const std::string real = PEMLO_SOUNDINGS_DIR "/b003688.txt";
    const std::string worst = WriteWorstCase();
    const std::string largest = WriteLargestImport();

    std::printf("Whole processes, median wall time of %d runs (ms), A and B in turn\n", runs);
    std::printf("%-58s %8s %8s %7s %7s\n", "A against B", "A", "B", "A/B", "target");
    Compare({"pemlo-cli classify, worst case, against the oracle", {cli, "classify", worst, "--data-units", "si"},
             {oracle, worst}, 0.10},
            runs);
    Compare({"pemlo-cli classify, b003688 (1,218 readings), against the oracle", {cli, "classify", real, "--data-units", "si"},
             {oracle, real}, 1.0},
            runs);
    Compare({"pemlo-cli classify, b003688, against wc -l on it", {cli, "classify", real, "--data-units", "si"},
             {"wc", "-l", real}, 3.0},
            runs);
    Compare({"pemlo-cli sbt, 32,766-reading GEF import, against classify", {cli, "sbt", largest},
             {cli, "classify", largest}, 1.5},
            runs);
    const std::string logPdf = (fs::temp_directory_path() / ("pemlo-log-" + std::to_string(getpid()) + ".pdf")).string();
    const std::string reportPdf =
        (fs::temp_directory_path() / ("pemlo-report-" + std::to_string(getpid()) + ".pdf")).string();
    Compare({"pemlo-cli log, b003688, against report on it", {cli, "log", real, "--data-units", "si", "--pdf", logPdf},
             {cli, "report", real, "--data-units", "si", "--pdf", reportPdf}, 2.0},
            runs);
    std::error_code ec;
    fs::remove(worst, ec);
    fs::remove(largest, ec);
    fs::remove(logPdf, ec);
    fs::remove(reportPdf, ec);
    return 0;
}
