#include "ToolRun.h"

#include "StormRun.h"

#include <QProcess>
#include <QStringList>

#include <memory>
#include <ostream>
#include <vector>

namespace
{

// For the scripts: FOLDERS folders of a hundred files each below q.
constexpr auto Functions = "many_files() { mkdir q; for d in $(seq $FOLDERS); do mkdir q/$d;"
                           "for f in $(seq 100); do echo $d $f > q/$d/$f; done; done; }\n";

} // namespace

const std::array<TToolRun, 5> ToolRuns = {{
    {"Unpacking", "tar", "many_files; tar cf ../q.tar q; rm -r q", "tar xf ../q.tar"},
    {"RemovalAndReturn", "cp", "many_files; cp -a q ../q", "rm -rf q; cp -a ../q q; rm -rf q; mv ../q q"},
    {"CheckoutBetweenDistantCommits", "git",
     "git init -q .; git config user.email a@b; git config user.name a; git config core.fsync none;"
     "mkdir a b; for f in $(seq 400); do echo $f > a/$f; echo $f > b/$f; done; git add -A; git commit -qm 1;"
     "git tag eins; git mv a c; for f in $(seq 200); do echo neu > b/$f; git rm -q b/$((f + 200)); done;"
     "mkdir -p d/e/f; for f in $(seq 200); do echo $f > d/e/f/$f; done; rm -rf c/1; ln -s 2 c/verweis;"
     "git add -A; git commit -qm 2; git tag zwei",
     "git checkout -q eins; git checkout -q zwei; git checkout -q eins; git gc -q"},
    {"Synchronisation", "rsync",
     "mkdir -p a/b; for f in $(seq 500); do echo $f > a/$f; echo $f > a/b/$f; done;"
     "cp -a . ../q; cd ../q; rm a/1*; mkdir -p a/c/d; for f in $(seq 500); do echo neu$f > a/b/$f;"
     "echo $f > a/c/d/$f; done; mv a/b a/e",
     "for way in --whole-file --inplace --delay-updates; do rsync -a --delete --exclude /actions.log $way ../q/ .; "
     "done"},
    // A temporary name; a backup by renaming; a backup by copying; a link to the old content; writing in place.
    {"SafeSavesOfEditors", "sh", "mkdir a; for f in $(seq 50); do echo $f > a/$f; done",
     "for f in $(seq 1 10); do echo neu > a/.$f.tmp; mv a/.$f.tmp a/$f; done;"
     "for f in $(seq 11 20); do mv a/$f a/$f~; echo neu > a/$f; rm a/$f~; done;"
     "for f in $(seq 21 30); do cp a/$f a/$f.bak; echo neu > a/$f; done;"
     "for f in $(seq 31 40); do ln a/$f a/$f.bak; echo neu > a/t; mv a/t a/$f; done;"
     "for f in $(seq 41 50); do echo mehr >> a/$f; touch a/4913; rm a/4913; done"},
}};

std::ostream& operator<<(std::ostream& stream, const TToolRun& run)
{
    return stream << run.Name;
}

bool RunScript(const QString& root, const char* script)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("FOLDERS"), AreStormsLong() ? QStringLiteral("200") : QStringLiteral("20"));
    std::vector<std::unique_ptr<QProcess>> programs;
    programs.push_back(std::make_unique<QProcess>());
    QProcess& shell = *programs.back();
    shell.setProcessEnvironment(environment);
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.setWorkingDirectory(root);
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-ec"), QLatin1String(Functions) + QLatin1String(script)});
    return WaitForAll(programs);
}
