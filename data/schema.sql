-- Tables of TDS Forms. Applied on every connect: every statement must be idempotent.

-- forms tables

-- Form 15C: one row per period. The text columns are read and written by position.
CREATE TABLE IF NOT EXISTS Form15C (
  period_code INT NOT NULL,
  AssessingOfficer VARCHAR(255) NULL,
  BranchPlaces VARCHAR(255) NULL,
  HeadOffice VARCHAR(255) NULL,
  FinYear VARCHAR(255) NULL,
  KEY idx_form15c_period (period_code)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Form 15D: one row per period.
CREATE TABLE IF NOT EXISTS Form15D (
  period_code INT NOT NULL,
  AssessingOfficer VARCHAR(255) NULL,
  BranchNames VARCHAR(255) NULL,
  BranchOffices VARCHAR(255) NULL,
  HeadOffice VARCHAR(255) NULL,
  FinYear VARCHAR(255) NULL,
  KEY idx_form15d_period (period_code)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Form 15I: up to two vehicle lines per period, SrNo 1 or 2 (never renumbered).
CREATE TABLE IF NOT EXISTS Form15I (
  period_code INT NOT NULL,
  SrNo INT NOT NULL,
  RegNo VARCHAR(255) NULL,
  RegDate VARCHAR(255) NULL,
  KEY idx_form15i_period (period_code, SrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
