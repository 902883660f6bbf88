# peers.R VORN PROCESS_COST FILE: see bench/peers.
#
# Of R only the functions are measured, in an R that runs and has its library loaded; of vorn whole calls, from the start of
# the program to its end. Each is the shortest processor time of several trials, children included.
words <- commandArgs(trailingOnly = TRUE)
vorn <- words[1]
process_cost <- words[2]
file <- words[3]
trials <- 5

rows <- list()
add <- function(what, how, seconds) rows[[length(rows) + 1]] <<- list(what = what, how = how, seconds = seconds)

of_r <- function(what, how, work) {
  shortest <- Inf
  for (k in seq_len(trials)) {
    gc(FALSE)
    time <- system.time(suppressWarnings(work()))
    shortest <- min(shortest, time[["user.self"]] + time[["sys.self"]])
    if (shortest > 5) break
  }
  add(what, how, shortest)
}

of_vorn <- function(what, ...) {
  shortest <- Inf
  for (k in seq_len(trials)) {
    answer <- system2(process_cost, shQuote(c(vorn, ..., file)), stdout = TRUE, stderr = FALSE)
    if (length(answer) != 1) stop("vorn ", paste(..., collapse = " "), " did not end well")
    shortest <- min(shortest, as.numeric(strsplit(answer, " ")[[1]][2]))
  }
  add(what, paste(c("vorn", ...), collapse = " "), shortest)
}

# Tucson decades as a matrix of years and cores, for R alone: whole columns, 999 or -9999 behind the last ring.
read_plainly <- function() {
  lines <- readLines(file)
  lines <- lines[grepl("^.{8}[ 0-9-]{4}([ 0-9-]{6})+ *$", lines)]
  name <- trimws(substr(lines, 1, 8))
  year <- as.integer(substr(lines, 9, 12))
  values <- sapply(0:9, function(k) as.integer(substr(lines, 13 + 6 * k, 18 + 6 * k)))
  values[values %in% c(999, -9999)] <- NA
  years <- min(year):(max(year) + 9)
  widths <- matrix(NA_real_, length(years), length(unique(name)), dimnames = list(years, unique(name)))
  for (k in 0:9) {
    there <- !is.na(values[, k + 1])
    widths[cbind(match(year[there] + k, years), match(name[there], colnames(widths)))] <- values[there, k + 1]
  }
  widths
}

print_rows <- function(title) {
  cat(title, "\n\n| what | how | ms |\n|---|---|---:|\n", sep = "")
  for (row in rows) cat(sprintf("| %s | `%s` | %s |\n", row$what, row$how, format(signif(1e3 * row$seconds, 3), scientific = FALSE)))
}

has_dplr <- requireNamespace("dplR", quietly = TRUE)
if (has_dplr) {
  quiet <- function(work) { sink(nullfile()); on.exit(sink()); force(work) }
  read <- function() quiet(dplR::read.rwl(file, format = "tucson"))
  widths <- read()
  of_r("reading", "read.rwl", read)
  detrended <- function() dplR::detrend(widths, method = "Spline", nyrs = 32, f = 0.5)
  indices <- detrended()
  of_r("a spline of 32 years for each core", "detrend", detrended)
  of_r("the chronology, prewhitened, robust means", "chron(prewhiten = TRUE)", function() dplR::chron(indices, prewhiten = TRUE, biweight = TRUE))
  of_r("each core with the others", "interseries.cor", function() dplR::interseries.cor(indices))
  of_r("each core with the others, by segments of 50 years",
       "corr.rwl.seg", function() dplR::corr.rwl.seg(indices, seg.length = 50, make.plot = FALSE))
  of_r("one core with the others, by segments and lags",
       "ccf.series.rwl", function() dplR::ccf.series.rwl(indices, series = 1, seg.length = 50, make.plot = FALSE))
} else {
  widths <- read_plainly()
  indices <- widths
  of_r("reading, decades of whole columns alone", "readLines, substr", read_plainly)
}
of_r("all pairs of cores", "cor(use = \"pairwise.complete.obs\")", function() cor(indices, use = "pairwise.complete.obs"))
of_vorn("reading, spline, model and logarithm, each core with the others, all pairs", "stats")
of_vorn("the same, by segments of 50 years, and the chronologies among each other", "corr")
of_vorn("every core with the others, by segments and lags", "corr", "--grid", "lags")
of_vorn("the chronology", "chron")
print_rows(sprintf("%s: %d cores, %d years; %s%s", basename(file), ncol(widths), nrow(widths), R.version.string,
                   if (has_dplr) paste0(", dplR ", packageVersion("dplR")) else ", without dplR"))
if (!has_dplr) {
  message("\nbench/peers: dplR is not installed: install.packages(\"dplR\")")
  quit(status = 2)
}
