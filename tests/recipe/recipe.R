# The figures of the recipes in base R, from the published formulas: Rscript recipe.R CORES.csv FIGURES.csv [A,B]
#
# A third argument names cores, "A,B", of which the values year by year are written, too: all without.
#
# CORES.csv has a row for each ring: core,year,width in mm; an absent ring is 0, and no core has a gap. What is
# written has core,figure,year,value,p: a figure as a whole has no year, a segment its first one. `ar`, `acf`, `cor`
# and `cor.test` are R's own; spline, biweight mean and the rest follow the publications that the C++ names.
arguments <- commandArgs(trailingOnly = TRUE)
rings <- read.csv(arguments[1], colClasses = c(core = "character"))
cores <- lapply(split(rings, factor(rings$core, unique(rings$core))), function(one) {
  one <- one[order(one$year), ]
  stopifnot(diff(one$year) == 1)
  setNames(one$width, one$year)
})
years <- seq(min(rings$year), max(rings$year))

in_full <- if (length(arguments) > 2) strsplit(arguments[3], ",")[[1]] else names(cores)

figures <- list()
note <- function(core, figure, value, year = NA, p = NA)
  figures[[length(figures) + 1]] <<- data.frame(core, figure, year, value, p)

# --- Of the widths.

sensitivity <- function(w) {
  sums <- w[-1] + w[-length(w)]
  mean(ifelse(sums > 0, 2 * abs(diff(w)) / sums, 0))
}
for (name in names(cores)) {
  w <- unname(cores[[name]])
  n <- length(w)
  note(name, "sensitivity", sensitivity(w))
  note(name, "weighted_sensitivity", n / (n - 1) * sum(abs(diff(w))) / sum(w))
  note(name, "gini", sum(abs(outer(w, w, "-"))) / (2 * n^2 * mean(w)))
  note(name, "skew", sum((w - mean(w))^3) / (n * sd(w)^3))
  note(name, "ar1", acf(w, lag.max = 1, plot = FALSE)$acf[2])
}

# --- The steps.

# Reinsch (1967): the curve g that minimises sum (y - g)^2 + m integral g''^2, m so that half of the amplitude passes
# at the period (Cook and Peters 1981).
spline <- function(y, period) {
  n <- length(y)
  wave <- cos(2 * pi / period)
  m <- (wave + 2) / (12 * (wave - 1)^2)
  second <- t(diff(diag(n), differences = 2))
  between <- diag(2 / 3, n - 2)
  between[abs(row(between) - col(between)) == 1] <- 1 / 6
  as.vector(y - m * second %*% solve(between + m * t(second) %*% second, t(second) %*% y))
}
whitened <- function(index) {
  model <- ar(unname(index))
  setNames(as.vector(model$resid) + model$x.mean, names(index))
}
order_of <- function(index) ar(unname(index))$order
logarithm <- function(x) {
  x <- pmax(x, 0)
  log(x + mean(x, na.rm = TRUE) / 6)
}
biweight <- function(x) {
  x <- x[!is.na(x)]
  if (length(x) == 0) return(NA)
  u <- (x - median(x)) / (9 * median(abs(x - median(x))) + 1e-6)
  w <- ifelse(abs(u) <= 1, (1 - u^2)^2, 0)
  sum(w * x) / sum(w)
}

by_year <- function(series) sapply(series, function(one) one[as.character(years)])

ways <- list(
  holmes = list(
    index = function(w) setNames(w / pmax(spline(unname(w), 32), 0.001), names(w)), last = logarithm,
    master = function(x) if (all(is.na(x))) NA else mean(x, na.rm = TRUE), method = "pearson"),
  dplr = list(index = function(w) w / mean(w), last = identity, master = biweight, method = "spearman"))

ready <- lapply(ways, function(way) {
  index <- lapply(cores, way$index)
  for (name in names(cores)) note(name, paste0(if (identical(way, ways$dplr)) "dplr" else "holmes", "_order"),
                                  order_of(index[[name]]))
  table <- by_year(lapply(index, function(one) way$last(whitened(one))))
  others <- sapply(colnames(table), function(core)
    apply(table[, colnames(table) != core, drop = FALSE], 1, way$master))
  list(cores = table, others = others)
})

for (way in names(ways)) {
  for (name in names(cores)) {
    own <- ready[[way]]$cores[, name]
    others <- ready[[way]]$others[, name]
    for (k in which(!is.na(own) & name %in% in_full)) note(name, paste0(way, "_ready"), own[k], years[k])
    for (k in which(!is.na(others) & name %in% in_full & years %in% names(cores[[name]])))
      note(name, paste0(way, "_others"), others[k], years[k])
    both <- !is.na(own) & !is.na(others)
    if (sum(both) >= 10) {
      by_ranks <- ways[[way]]$method == "spearman"
      test <- suppressWarnings(cor.test(own[both], others[both], method = ways[[way]]$method, alternative = "greater"))
      note(name, paste0(way, "_r"), unname(test$estimate), p = if (by_ranks) test$p.value else NA)
    }
  }
}

# --- Segments of 50 years by 25.

for (name in names(cores)) {
  own <- ready$dplr$cores[, name]
  others <- ready$dplr$others[, name]
  from <- ceiling(min(years) / 100) * 100
  for (first in if (from > max(years) - 49) NULL else seq(from, max(years) - 49, 25)) {
    here <- years >= first & years <= first + 49
    if (anyNA(own[here]) || anyNA(others[here])) next
    test <- suppressWarnings(cor.test(own[here], others[here], method = "spearman", alternative = "greater"))
    note(name, "dplr_segment", unname(test$estimate), first, test$p.value)
  }
  own <- ready$holmes$cores[, name]
  others <- ready$holmes$others[, name]
  had <- years[!is.na(own) & !is.na(others)]
  if (length(had) == 0 || diff(range(had)) < 49) next
  had <- range(had)
  for (first in seq(floor(had[1] / 25) * 25 - 25, had[2], 25)) {
    from <- max(first, had[1])
    to <- min(first + 49, had[2])
    if (to - from <= 25) next
    if (from > first) to <- min(from + 49, had[2]) else if (to < first + 49) from <- max(to - 49, had[1])
    here <- own[years >= from & years <= to]
    at <- function(lag) unname(others[match(seq(from, to) + lag, years)])
    dated <- cor(here, at(0))
    note(name, "holmes_segment", dated, first)
    better <- sapply(setdiff(-10:10, 0), function(lag) !anyNA(at(lag)) && cor(here, at(lag)) > dated)
    note(name, "holmes_better_elsewhere", as.integer(any(better)), first)
  }
}

all <- do.call(rbind, figures)
all$value <- sprintf("%.12g", all$value)
all$p <- ifelse(is.na(all$p), "", sprintf("%.12g", all$p))
write.csv(all, arguments[2], row.names = FALSE, quote = FALSE, na = "")
