#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/process.h"
#include "support/program.h"
#include "support/samples.h"

namespace tolva::support {

/// A CUPS server of the test's own, which listens at a socket in its folder and touches nothing of the
/// machine's: each job that its queues print becomes a file. The first queue is the default one.
class PrintServer {
  public:
    struct Job {
        std::string title;
        std::string file; ///< PDF
    };

    /// What the queue's paper has for an edge that can't be printed on, in points.
    static constexpr int left_edge = 18, bottom_edge = 36, right_edge = 12, top_edge = 24;

    /// Listens at `socket`, which is where this process looks for printers.
    PrintServer(const std::string& socket, const std::string& queue) {
        namespace fs = std::filesystem;
        for (const char* name : {"root/ppd", "cache", "state/certs", "spool/tmp", "bin/backend", "jobs"})
            fs::create_directories(folder_.path() / name);
        const fs::path programs = "/usr/lib/cups";
        for (const char* name : {"filter", "cgi-bin", "daemon", "monitor", "notifier"})
            if (fs::exists(programs / name))
                fs::create_symlink(programs / name, folder_.path() / "bin" / name);
        write_backend();
        write_settings(socket);
        write_queue(queue);
        server_ = std::make_unique<Process>(std::vector<std::string>{program(), "-f", "-c",
                                                                     folder_.file("cupsd.conf"), "-s",
                                                                     folder_.file("cups-files.conf")},
                                            Streams{"", folder_.file("out"), folder_.file("err")});
        wait_until([&] { return !server_->running() || fs::exists(socket); });
    }

    static bool installed() { return std::filesystem::exists(program()); }
    bool running() const { return server_->running(); }
    /// What the server says of why it doesn't run.
    std::string complaint() const {
        return file_content(folder_.file("err")) + file_content(folder_.file("error_log"));
    }
    void stop() {
        server_->kill();
        server_->wait();
    }

    /// The jobs that have come out, in order, as soon as there are so many, or when it takes too long.
    std::vector<Job> jobs(std::size_t count) const {
        std::map<int, Job> arrived;
        wait_until([&] {
            arrived.clear();
            for (const auto& entry : std::filesystem::directory_iterator(folder_.path() / "jobs"))
                if (entry.path().extension() == ".pdf") {
                    std::filesystem::path title = entry.path();
                    arrived[std::stoi(title.stem().string())] = {
                        file_content(title.replace_extension("title")), entry.path().string()};
                }
            return arrived.size() >= count;
        });
        std::vector<Job> in_order;
        for (auto& [number, job] : arrived)
            in_order.push_back(std::move(job));
        return in_order;
    }

  private:
    static const char* program() { return "/usr/sbin/cupsd"; }

    template <class So>
    static void wait_until(So so) {
        constexpr int most_looks = 200;
        for (int look = 0; look < most_looks && !so(); ++look)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(std::filesystem::path(folder_.file(name)), std::ios::binary) << text;
    }

    /// Stores what a job prints, and then its title; asked for its devices it knows none.
    void write_backend() const {
        write("bin/backend/keep",
              "#!/bin/sh\n"
              "[ $# -gt 0 ] || exit 0\n"
              "jobs=${DEVICE_URI#keep:}\n"
              "printf %s \"$3\" >\"$jobs/$1.title\"\n"
              "cat ${6:+\"$6\"} >\"$jobs/$1.part\" && mv \"$jobs/$1.part\" \"$jobs/$1.pdf\"\n");
        namespace fs = std::filesystem;
        fs::permissions(folder_.file("bin/backend/keep"), fs::perms::owner_all);
    }

    void write_settings(const std::string& socket) const {
        write("cupsd.conf",
              "Listen " + socket +
                  "\n"
                  "Browsing Off\n"
                  "WebInterface No\n"
                  "DefaultAuthType None\n"
                  "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                  "<Policy default>\n  <Limit All>\n    Order deny,allow\n  </Limit>\n</Policy>\n");
        write("cups-files.conf", "ServerRoot " + folder_.file("root") + "\nServerBin " + folder_.file("bin") +
                                     "\nCacheDir " + folder_.file("cache") + "\nStateDir " +
                                     folder_.file("state") + "\nRequestRoot " + folder_.file("spool") +
                                     "\nTempDir " + folder_.file("spool/tmp") + "\nAccessLog " +
                                     folder_.file("access_log") + "\nErrorLog " + folder_.file("error_log") +
                                     "\nPageLog " + folder_.file("page_log") + "\n");
    }

    void write_queue(const std::string& queue) const {
        write("root/printers.conf", "<DefaultPrinter " + queue + ">\nDeviceURI keep:" + folder_.file("jobs") +
                                        "\nState Idle\nAccepting Yes\nShared No\n</DefaultPrinter>\n");
        write("root/ppd/" + queue + ".ppd", description(queue));
    }

    /// A printer of Letter and A4 that takes PDF as it is.
    static std::string description(const std::string& name) {
        struct Paper {
            std::string name;
            int width, height;
        };
        std::string text =
            "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
            "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"KEEP.PPD\"\n"
            "*Manufacturer: \"Test\"\n*Product: \"(Test)\"\n*PSVersion: \"(3010.000) 0\"\n"
            "*LanguageLevel: \"3\"\n*ColorDevice: True\n*DefaultColorSpace: RGB\n"
            "*FileSystem: False\n*DefaultResolution: 600dpi\n"
            "*cupsFilter2: \"application/pdf application/pdf 0 -\"\n";
        text +=
            "*ModelName: \"" + name + "\"\n*ShortNickName: \"" + name + "\"\n*NickName: \"" + name + "\"\n";
        const std::vector<Paper> papers = {{"Letter", 612, 792}, {"A4", 595, 842}};
        for (const char* option : {"PageSize", "PageRegion"}) {
            text += std::string("*OpenUI *") + option +
                    "/Media Size: PickOne\n*OrderDependency: 10 AnySetup *" + option + "\n*Default" + option +
                    ": Letter\n";
            for (const Paper& paper : papers)
                text += std::string("*") + option + " " + paper.name + ": \"\"\n";
            text += std::string("*CloseUI: *") + option + "\n";
        }
        text += "*DefaultImageableArea: Letter\n*DefaultPaperDimension: Letter\n";
        for (const Paper& paper : papers)
            text += "*ImageableArea " + paper.name + ": \"" + std::to_string(left_edge) + " " +
                    std::to_string(bottom_edge) + " " + std::to_string(paper.width - right_edge) + " " +
                    std::to_string(paper.height - top_edge) + "\"\n*PaperDimension " + paper.name + ": \"" +
                    std::to_string(paper.width) + " " + std::to_string(paper.height) + "\"\n";
        return text;
    }

    TemporaryFolder folder_;
    std::unique_ptr<Process> server_;
};

} // namespace tolva::support
