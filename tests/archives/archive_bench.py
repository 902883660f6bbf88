"""A folder such as docs/archives.md speaks of, and what a program in it finds around it."""
import os
import re
import shutil


def twenty_files(examples, archive):
    """Four examples, each under five names."""
    archive.mkdir()
    for file in ["anywhere.crn", "faraway.rwm", "nearby.fh", "nowhere.rwl"]:
        for k in range(1, 6):
            stem, layout = file.split(".")
            shutil.copy(examples / file, archive / f"{stem}{k:02}.{layout}")


def sample(examples, samples):
    samples.mkdir()
    shutil.copy(examples / "adrift.rwl", samples)


def surroundings(vorn, folder):
    """`vorn` is found, and what it keeps stays in the folder."""
    return os.environ | {
        "PATH": f"{vorn.parent}{os.pathsep}{os.environ['PATH']}",
        "XDG_CACHE_HOME": str(folder / ".kept"),
        "HOME": str(folder),
        "LC_ALL": "C.UTF-8",
    }


def without_engine(said):
    """What is said, but for the lines in which the engine tells of itself whatever it is asked."""
    return re.sub(r"^(?:Complete log|Building DAG of jobs).*\n", "", said, flags=re.MULTILINE)
