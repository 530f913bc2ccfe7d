-- Tables of TDS Forms. Applied on every connect: every statement must be idempotent.

-- host master tables

-- One key per deductor and assessment year; every form row is stored under it.
CREATE TABLE IF NOT EXISTS Period_Det_Oth (
  Period_Code INT NOT NULL,
  Code_No VARCHAR(20) NOT NULL,
  AsYear VARCHAR(7) NOT NULL,
  PRIMARY KEY (Period_Code),
  UNIQUE KEY uq_period_det_oth (Code_No, AsYear)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- The deductor (one row each) and its responsible person.
CREATE TABLE IF NOT EXISTS Main_Info (
  Code_No VARCHAR(20) NOT NULL,
  Name VARCHAR(150) NOT NULL DEFAULT '',
  Tanno VARCHAR(10) NOT NULL DEFAULT '',
  panno VARCHAR(10) NOT NULL DEFAULT '',
  Branch VARCHAR(75) NOT NULL DEFAULT '',
  flat VARCHAR(50) NOT NULL DEFAULT '',
  building VARCHAR(50) NOT NULL DEFAULT '',
  street VARCHAR(50) NOT NULL DEFAULT '',
  area VARCHAR(50) NOT NULL DEFAULT '',
  city VARCHAR(50) NOT NULL DEFAULT '',
  State VARCHAR(60) NOT NULL DEFAULT '',
  PIN VARCHAR(6) NOT NULL DEFAULT '',
  Phone_Nos VARCHAR(50) NOT NULL DEFAULT '',
  Email VARCHAR(100) NOT NULL DEFAULT '',
  Email1 VARCHAR(100) NOT NULL DEFAULT '',
  Mobile VARCHAR(15) NOT NULL DEFAULT '',
  Mobile1 VARCHAR(15) NOT NULL DEFAULT '',
  Resp_Name VARCHAR(100) NOT NULL DEFAULT '',
  Resp_FName VARCHAR(100) NOT NULL DEFAULT '',
  Resp_Desig VARCHAR(50) NOT NULL DEFAULT '',
  Resp_Pan VARCHAR(10) NOT NULL DEFAULT '',
  Resp_Mobile VARCHAR(15) NOT NULL DEFAULT '',
  Resp_Email VARCHAR(100) NOT NULL DEFAULT '',
  Resp_Flat VARCHAR(50) NOT NULL DEFAULT '',
  Resp_Building VARCHAR(50) NOT NULL DEFAULT '',
  Resp_Street VARCHAR(50) NOT NULL DEFAULT '',
  Resp_Area VARCHAR(50) NOT NULL DEFAULT '',
  Resp_City VARCHAR(50) NOT NULL DEFAULT '',
  Resp_State VARCHAR(60) NOT NULL DEFAULT '',
  Resp_PIN VARCHAR(6) NOT NULL DEFAULT '',
  FormPlace VARCHAR(50) NOT NULL DEFAULT '',
  FormDate VARCHAR(10) NOT NULL DEFAULT '',
  PRIMARY KEY (Code_No)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- The deductor as an assessee: status, date of birth or incorporation, jurisdiction.
CREATE TABLE IF NOT EXISTS Main_Info_oth (
  code_no VARCHAR(20) NOT NULL,
  Name VARCHAR(150) NOT NULL DEFAULT '',
  panno VARCHAR(10) NOT NULL DEFAULT '',
  status VARCHAR(2) NOT NULL DEFAULT '',
  dob VARCHAR(10) NOT NULL DEFAULT '',
  flat VARCHAR(50) NOT NULL DEFAULT '',
  building VARCHAR(50) NOT NULL DEFAULT '',
  street VARCHAR(50) NOT NULL DEFAULT '',
  area VARCHAR(50) NOT NULL DEFAULT '',
  city VARCHAR(50) NOT NULL DEFAULT '',
  State VARCHAR(60) NOT NULL DEFAULT '',
  PIN VARCHAR(6) NOT NULL DEFAULT '',
  Phone_Nos VARCHAR(50) NOT NULL DEFAULT '',
  Email VARCHAR(100) NOT NULL DEFAULT '',
  ward VARCHAR(100) NOT NULL DEFAULT '',
  asofficer VARCHAR(100) NOT NULL DEFAULT '',
  resident_status VARCHAR(20) NOT NULL DEFAULT '',
  PRIMARY KEY (code_no)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Quarterly periods of a deductor-year (period-based forms such as 15J).
CREATE TABLE IF NOT EXISTS Period_Master (
  Period_Code INT NOT NULL,
  Code_No VARCHAR(20) NOT NULL,
  AsYear VARCHAR(7) NOT NULL,
  Quarter VARCHAR(2) NOT NULL,
  PRIMARY KEY (Period_Code),
  UNIQUE KEY uq_period_master (Code_No, AsYear, Quarter)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Status of an assessee; the codes are the fourth letter of a PAN.
CREATE TABLE IF NOT EXISTS Status_Master (
  Status_Code VARCHAR(2) NOT NULL,
  Status_Desc VARCHAR(60) NOT NULL,
  PRIMARY KEY (Status_Code)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

INSERT IGNORE INTO Status_Master (Status_Code, Status_Desc) VALUES
  ('P', 'Individual'),
  ('H', 'Hindu Undivided Family'),
  ('F', 'Firm'),
  ('A', 'Association of Persons'),
  ('B', 'Body of Individuals'),
  ('L', 'Local Authority'),
  ('J', 'Artificial Juridical Person'),
  ('C', 'Company'),
  ('G', 'Government'),
  ('T', 'Trust');

-- States and union territories with the host's codes (the GST state codes).
CREATE TABLE IF NOT EXISTS State_Master (
  State_Code VARCHAR(2) NOT NULL,
  State_Name VARCHAR(60) NOT NULL,
  PRIMARY KEY (State_Code),
  UNIQUE KEY uq_state_name (State_Name)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

INSERT IGNORE INTO State_Master (State_Code, State_Name) VALUES
  ('01', 'JAMMU & KASHMIR'),
  ('02', 'HIMACHAL PRADESH'),
  ('03', 'PUNJAB'),
  ('04', 'CHANDIGARH'),
  ('05', 'UTTARAKHAND'),
  ('06', 'HARYANA'),
  ('07', 'DELHI'),
  ('08', 'RAJASTHAN'),
  ('09', 'UTTAR PRADESH'),
  ('10', 'BIHAR'),
  ('11', 'SIKKIM'),
  ('12', 'ARUNACHAL PRADESH'),
  ('13', 'NAGALAND'),
  ('14', 'MANIPUR'),
  ('15', 'MIZORAM'),
  ('16', 'TRIPURA'),
  ('17', 'MEGHALAYA'),
  ('18', 'ASSAM'),
  ('19', 'WEST BENGAL'),
  ('20', 'JHARKHAND'),
  ('21', 'ODISHA'),
  ('22', 'CHHATTISGARH'),
  ('23', 'MADHYA PRADESH'),
  ('24', 'GUJARAT'),
  ('25', 'DAMAN & DIU'),
  ('26', 'DADRA & NAGAR HAVELI AND DAMAN & DIU'),
  ('27', 'MAHARASHTRA'),
  ('29', 'KARNATAKA'),
  ('30', 'GOA'),
  ('31', 'LAKHSWADEEP'),
  ('32', 'KERALA'),
  ('33', 'TAMILNADU'),
  ('34', 'PUDUCHERRY'),
  ('35', 'ANDAMAN AND NICOBAR ISLANDS'),
  ('36', 'TELANGANA'),
  ('37', 'ANDHRA PRADESH'),
  ('38', 'LADAKH');

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

-- Forms 15G and 15H: one row per declaration, positional: declarant slots, then payer slots.
CREATE TABLE IF NOT EXISTS Tb15gM (
  Period_Code INT NOT NULL,
  FormSrNo INT NOT NULL,
  Name VARCHAR(255) NULL,
  PAN VARCHAR(100) NULL,
  Status VARCHAR(100) NULL,
  Flat VARCHAR(100) NULL,
  Premises VARCHAR(100) NULL,
  Road VARCHAR(100) NULL,
  Area VARCHAR(100) NULL,
  Town VARCHAR(100) NULL,
  State VARCHAR(100) NULL,
  PIN VARCHAR(100) NULL,
  Email VARCHAR(100) NULL,
  StdCode VARCHAR(100) NULL,
  TelNo VARCHAR(100) NULL,
  Mobile VARCHAR(100) NULL,
  AssessedWard VARCHAR(100) NULL,
  AoCode VARCHAR(100) NULL,
  AoArea VARCHAR(100) NULL,
  AoType VARCHAR(100) NULL,
  AoRange VARCHAR(100) NULL,
  AoNo VARCHAR(100) NULL,
  LastAsYear VARCHAR(100) NULL,
  JurisCIT VARCHAR(255) NULL,
  PresentWard VARCHAR(100) NULL,
  PresentAoCode VARCHAR(100) NULL,
  PAoArea VARCHAR(100) NULL,
  PAoType VARCHAR(100) NULL,
  PAoRange VARCHAR(100) NULL,
  PAoNo VARCHAR(100) NULL,
  ResStatus VARCHAR(100) NULL,
  Occupation VARCHAR(255) NULL,
  EstIncome DECIMAL(15,2) NULL,
  SourceFlags VARCHAR(5) NULL,
  EstTotalIncome DECIMAL(15,2) NULL,
  PName VARCHAR(255) NULL,
  PAddress VARCHAR(255) NULL,
  PPan VARCHAR(100) NULL,
  PTan VARCHAR(100) NULL,
  PStatus VARCHAR(100) NULL,
  PEmail VARCHAR(100) NULL,
  PStdCode VARCHAR(100) NULL,
  PTelNo VARCHAR(100) NULL,
  PMobile VARCHAR(100) NULL,
  FurnishedOn VARCHAR(100) NULL,
  PeriodOfIncome VARCHAR(255) NULL,
  AmountPaid DECIMAL(15,2) NULL,
  PaidOn VARCHAR(100) NULL,
  DeclaredOn VARCHAR(100) NULL,
  NssAccount VARCHAR(100) NULL,
  ForwardedTo VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15hM (
  Period_Code INT NOT NULL,
  FormSrNo INT NOT NULL,
  Name VARCHAR(255) NULL,
  PAN VARCHAR(100) NULL,
  DOB VARCHAR(100) NULL,
  Flat VARCHAR(100) NULL,
  Premises VARCHAR(100) NULL,
  Road VARCHAR(100) NULL,
  Area VARCHAR(100) NULL,
  Town VARCHAR(100) NULL,
  State VARCHAR(100) NULL,
  PIN VARCHAR(100) NULL,
  Email VARCHAR(100) NULL,
  StdCode VARCHAR(100) NULL,
  TelNo VARCHAR(100) NULL,
  Mobile VARCHAR(100) NULL,
  AssessedWard VARCHAR(100) NULL,
  AoCode VARCHAR(100) NULL,
  AoArea VARCHAR(100) NULL,
  AoType VARCHAR(100) NULL,
  AoRange VARCHAR(100) NULL,
  AoNo VARCHAR(100) NULL,
  LastAsYear VARCHAR(100) NULL,
  JurisCIT VARCHAR(255) NULL,
  PresentWard VARCHAR(100) NULL,
  PresentAoCode VARCHAR(100) NULL,
  PAoArea VARCHAR(100) NULL,
  PAoType VARCHAR(100) NULL,
  PAoRange VARCHAR(100) NULL,
  PAoNo VARCHAR(100) NULL,
  Occupation VARCHAR(255) NULL,
  EstIncome DECIMAL(15,2) NULL,
  SourceFlags VARCHAR(5) NULL,
  EstTotalIncome DECIMAL(15,2) NULL,
  PName VARCHAR(255) NULL,
  PAddress VARCHAR(255) NULL,
  PPan VARCHAR(100) NULL,
  PTan VARCHAR(100) NULL,
  PStatus VARCHAR(100) NULL,
  PEmail VARCHAR(100) NULL,
  PStdCode VARCHAR(100) NULL,
  PTelNo VARCHAR(100) NULL,
  PMobile VARCHAR(100) NULL,
  FurnishedOn VARCHAR(100) NULL,
  PeriodOfIncome VARCHAR(255) NULL,
  AmountPaid DECIMAL(15,2) NULL,
  PaidOn VARCHAR(100) NULL,
  DeclaredOn VARCHAR(100) NULL,
  NssAccount VARCHAR(100) NULL,
  ForwardedTo VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Their Schedules I to V, rows numbered by Srno within a declaration.
CREATE TABLE IF NOT EXISTS Tb15gT1 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  Shares DECIMAL(18,2) NULL,
  ShareClass VARCHAR(255) NULL,
  FaceValue DECIMAL(18,2) NULL,
  DistinctiveNos DECIMAL(18,2) NULL,
  AcquiredOn VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15gT2 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  Description VARCHAR(255) NULL,
  Number DECIMAL(18,2) NULL,
  Amount DECIMAL(18,2) NULL,
  SecurityDates VARCHAR(255) NULL,
  AcquiredOn VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15gT3 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  GivenTo VARCHAR(255) NULL,
  Amount DECIMAL(18,2) NULL,
  GivenOn VARCHAR(255) NULL,
  Period VARCHAR(255) NULL,
  Rate DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15gT4 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  MutualFund VARCHAR(255) NULL,
  Units DECIMAL(18,2) NULL,
  UnitClass VARCHAR(255) NULL,
  DistinctiveNos DECIMAL(18,2) NULL,
  Income DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15gT5 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  PostOffice VARCHAR(255) NULL,
  OpenedOn VARCHAR(255) NULL,
  Withdrawal DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15hT1 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  Shares DECIMAL(18,2) NULL,
  ShareClass VARCHAR(255) NULL,
  FaceValue DECIMAL(18,2) NULL,
  DistinctiveNos DECIMAL(18,2) NULL,
  AcquiredOn VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15hT2 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  Description VARCHAR(255) NULL,
  Number DECIMAL(18,2) NULL,
  Amount DECIMAL(18,2) NULL,
  SecurityDates VARCHAR(255) NULL,
  AcquiredOn VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15hT3 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  GivenTo VARCHAR(255) NULL,
  Amount DECIMAL(18,2) NULL,
  GivenOn VARCHAR(255) NULL,
  Period VARCHAR(255) NULL,
  Rate DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15hT4 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  MutualFund VARCHAR(255) NULL,
  Units DECIMAL(18,2) NULL,
  UnitClass VARCHAR(255) NULL,
  DistinctiveNos DECIMAL(18,2) NULL,
  Income DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15hT5 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  PostOffice VARCHAR(255) NULL,
  OpenedOn VARCHAR(255) NULL,
  Withdrawal DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
-- Forms 15G and 15H as amended from October 2015: one row a declaration, the income details
-- in IncomeDetails as one text (cells split by the broken bar, rows by ^).
CREATE TABLE IF NOT EXISTS Tb15gNew (
  Period_Code INT NOT NULL,
  FormSrNo INT NOT NULL,
  Name VARCHAR(150) NULL,
  PAN VARCHAR(10) NULL,
  Status VARCHAR(20) NULL,
  ResStatus VARCHAR(40) NULL,
  Flat VARCHAR(100) NULL,
  Premises VARCHAR(100) NULL,
  Road VARCHAR(100) NULL,
  Area VARCHAR(100) NULL,
  Town VARCHAR(100) NULL,
  State VARCHAR(60) NULL,
  PIN VARCHAR(6) NULL,
  Email VARCHAR(100) NULL,
  StdCode VARCHAR(10) NULL,
  TelNo VARCHAR(20) NULL,
  Mobile VARCHAR(15) NULL,
  AssessedToTax VARCHAR(3) NULL,
  EstIncome DECIMAL(15,2) NULL,
  EstTotalIncome DECIMAL(15,2) NULL,
  OtherFormsFiled INT NULL,
  OtherFormsIncome DECIMAL(15,2) NULL,
  LatestAsYear VARCHAR(7) NULL,
  PrevYear VARCHAR(7) NULL,
  IncomeDetails TEXT NULL,
  PName VARCHAR(150) NULL,
  PSequenceNo VARCHAR(9) NULL,
  PPan VARCHAR(10) NULL,
  PAddress VARCHAR(255) NULL,
  PTan VARCHAR(10) NULL,
  PEmail VARCHAR(100) NULL,
  PStdCode VARCHAR(10) NULL,
  PTelNo VARCHAR(20) NULL,
  PMobile VARCHAR(15) NULL,
  AmountPaid DECIMAL(15,2) NULL,
  ReceivedOn VARCHAR(10) NULL,
  PaidOn VARCHAR(10) NULL,
  PRIMARY KEY (Period_Code, FormSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Tb15hNew (
  Period_Code INT NOT NULL,
  FormSrNo INT NOT NULL,
  Name VARCHAR(150) NULL,
  PAN VARCHAR(10) NULL,
  DOB VARCHAR(10) NULL,
  Flat VARCHAR(100) NULL,
  Premises VARCHAR(100) NULL,
  Road VARCHAR(100) NULL,
  Area VARCHAR(100) NULL,
  Town VARCHAR(100) NULL,
  State VARCHAR(60) NULL,
  PIN VARCHAR(6) NULL,
  Email VARCHAR(100) NULL,
  StdCode VARCHAR(10) NULL,
  TelNo VARCHAR(20) NULL,
  Mobile VARCHAR(15) NULL,
  AssessedToTax VARCHAR(3) NULL,
  EstIncome DECIMAL(15,2) NULL,
  EstTotalIncome DECIMAL(15,2) NULL,
  OtherFormsFiled INT NULL,
  OtherFormsIncome DECIMAL(15,2) NULL,
  LatestAsYear VARCHAR(7) NULL,
  PrevYear VARCHAR(7) NULL,
  IncomeDetails TEXT NULL,
  PName VARCHAR(150) NULL,
  PSequenceNo VARCHAR(9) NULL,
  PPan VARCHAR(10) NULL,
  PAddress VARCHAR(255) NULL,
  PTan VARCHAR(10) NULL,
  PEmail VARCHAR(100) NULL,
  PStdCode VARCHAR(10) NULL,
  PTelNo VARCHAR(20) NULL,
  PMobile VARCHAR(15) NULL,
  AmountPaid DECIMAL(15,2) NULL,
  ReceivedOn VARCHAR(10) NULL,
  PaidOn VARCHAR(10) NULL,
  PRIMARY KEY (Period_Code, FormSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
-- Forms 15G and 15H in their first layout: one row a declaration; Form 15G's Schedules I to V
-- (securities, shares, sums, units, National Savings Scheme) and Form 15H's table of income
-- keyed to it by (Period_Code, FormSrId).
CREATE TABLE IF NOT EXISTS Form15G (
  Period_Code INT NOT NULL,
  FormSrNo INT NOT NULL,
  Name VARCHAR(150) NULL,
  Relative VARCHAR(150) NULL,
  Status VARCHAR(100) NULL,
  Address VARCHAR(255) NULL,
  PAN VARCHAR(10) NULL,
  LastAsYear VARCHAR(10) NULL,
  AssessedWard VARCHAR(100) NULL,
  JurisCIT VARCHAR(255) NULL,
  Income_From VARCHAR(100) NULL,
  EstTotalIncome DECIMAL(15,2) NULL,
  SourceFlags VARCHAR(5) NULL,
  PName VARCHAR(150) NULL,
  PAddress VARCHAR(255) NULL,
  PTan VARCHAR(10) NULL,
  FurnishedOn VARCHAR(10) NULL,
  PeriodOfIncome VARCHAR(255) NULL,
  AmountPaid DECIMAL(15,2) NULL,
  PaidOn VARCHAR(10) NULL,
  ForwardedTo VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Form15G_Sch1 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  Description VARCHAR(255) NULL,
  Number DECIMAL(18,2) NULL,
  Amount DECIMAL(18,2) NULL,
  SecurityDates VARCHAR(255) NULL,
  AcquiredOn VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Form15G_Sch2 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  Shares DECIMAL(18,2) NULL,
  ShareClass VARCHAR(255) NULL,
  FaceValue DECIMAL(18,2) NULL,
  DistinctiveNos DECIMAL(18,2) NULL,
  AcquiredOn VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Form15G_Sch3 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  GivenTo VARCHAR(255) NULL,
  Amount DECIMAL(18,2) NULL,
  GivenOn VARCHAR(255) NULL,
  Period VARCHAR(255) NULL,
  Rate DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Form15G_Sch4 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  MutualFund VARCHAR(255) NULL,
  Units DECIMAL(18,2) NULL,
  UnitClass VARCHAR(255) NULL,
  DistinctiveNos DECIMAL(18,2) NULL,
  Income DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Form15G_Sch5 (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  Srno INT NOT NULL,
  PostOffice VARCHAR(255) NULL,
  OpenedOn VARCHAR(255) NULL,
  Withdrawal DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, Srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Form15H (
  Period_Code INT NOT NULL,
  FormSrNo INT NOT NULL,
  Name VARCHAR(150) NULL,
  Relative VARCHAR(150) NULL,
  Address VARCHAR(255) NULL,
  DOB VARCHAR(10) NULL,
  Age VARCHAR(3) NULL,
  PAN VARCHAR(10) NULL,
  LastAsYear VARCHAR(10) NULL,
  AssessedWard VARCHAR(100) NULL,
  JurisCIT VARCHAR(255) NULL,
  EstTotalIncome DECIMAL(15,2) NULL,
  PName VARCHAR(150) NULL,
  PAddress VARCHAR(255) NULL,
  PTan VARCHAR(10) NULL,
  FurnishedOn VARCHAR(10) NULL,
  PeriodOfIncome VARCHAR(255) NULL,
  AmountPaid DECIMAL(15,2) NULL,
  PaidOn VARCHAR(10) NULL,
  ForwardedTo VARCHAR(255) NULL,
  PRIMARY KEY (Period_Code, FormSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
CREATE TABLE IF NOT EXISTS Form15H_Table (
  Period_Code INT NOT NULL,
  FormSrId INT NOT NULL,
  SrNo INT NOT NULL,
  NatureOfIncome VARCHAR(255) NULL,
  Particulars VARCHAR(255) NULL,
  InvestedOn VARCHAR(255) NULL,
  Amount DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, FormSrId, SrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
-- Tax-deposit challans (ITNS 281) of a deductor and year; the values go in positionally.
CREATE TABLE IF NOT EXISTS Challan_ZeltOth (
  code_no VARCHAR(20) NOT NULL,
  t_year INT NOT NULL,
  srno INT NOT NULL,
  challan_no VARCHAR(50) NULL,
  challan_dt VARCHAR(10) NULL,
  res_status INT NULL,
  challan_type INT NULL,
  paynat INT NULL,
  tax DECIMAL(18,2) NULL,
  surcharge DECIMAL(18,2) NULL,
  interest DECIMAL(18,2) NULL,
  penalty DECIMAL(18,2) NULL,
  others DECIMAL(18,2) NULL,
  chq_no VARCHAR(50) NULL,
  chq_dt VARCHAR(10) NULL,
  bank_nm VARCHAR(150) NULL,
  educess DECIMAL(18,2) NULL,
  paymode VARCHAR(20) NULL,
  comp INT NULL,
  educess1 DECIMAL(18,2) NULL,
  latefee234E DECIMAL(18,2) NULL,
  PRIMARY KEY (code_no, t_year, srno)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
-- Section-wise amounts of a challan (the current form); rows of a deleted challan stay
-- until a challan is saved under its serial again.
CREATE TABLE IF NOT EXISTS Challan_TDSSec (
  code_no VARCHAR(20) NOT NULL,
  t_year INT NOT NULL,
  ChSrNo INT NOT NULL,
  PayNat INT NOT NULL,
  Tax DECIMAL(18,2) NULL,
  Surcharge DECIMAL(18,2) NULL,
  HEducess DECIMAL(18,2) NULL,
  Others DECIMAL(18,2) NULL,
  KEY (code_no, t_year, ChSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Form 26QA deductees of a deductor. DedSrNo is one counter over the whole table (a
-- payment names its deductee by it alone); the rows are written by position.
CREATE TABLE IF NOT EXISTS Form26QA_DedMaster (
  Code_No VARCHAR(20) NOT NULL,
  DedSrNo INT NOT NULL,
  DedName VARCHAR(100) NULL,
  DedPan VARCHAR(10) NULL,
  DedDob VARCHAR(10) NULL,
  DedFlat VARCHAR(50) NULL,
  DedBuilding VARCHAR(50) NULL,
  DedStreet VARCHAR(50) NULL,
  DedArea VARCHAR(50) NULL,
  DedCity VARCHAR(50) NULL,
  DedState VARCHAR(60) NULL,
  DedPin VARCHAR(6) NULL,
  DedGroup INT NOT NULL DEFAULT 0,
  PRIMARY KEY (Code_No, DedSrNo),
  UNIQUE KEY uq_dedmaster_srno (DedSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Groups of deductees; a description is listed once.
CREATE TABLE IF NOT EXISTS Group_Master (
  group_code INT NOT NULL,
  group_desc VARCHAR(100) NOT NULL,
  PRIMARY KEY (group_code),
  UNIQUE KEY uq_group_desc (group_desc)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- Form 26QA payments to a deductee, under a period of Period_Master.
CREATE TABLE IF NOT EXISTS Form26QA_Payments (
  Period_Code INT NOT NULL,
  DedSrNo INT NOT NULL,
  SrNo INT NOT NULL,
  PaymentDate VARCHAR(10) NULL,
  AmountPaid DECIMAL(18,2) NULL,
  TaxDeducted DECIMAL(18,2) NULL,
  PRIMARY KEY (Period_Code, DedSrNo, SrNo),
  KEY idx_form26qa_payments_ded (DedSrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- The e-filing portal login of a deductor (TAN), written by position: 30 columns. LoginPwd
-- holds the password sealed with the desk's key file, or "#?#TAN#?#" / "#?#COMMON#?#".
CREATE TABLE IF NOT EXISTS ItdLoginTanU (
  Code_No VARCHAR(20) NOT NULL,
  MobNo VARCHAR(20) NOT NULL DEFAULT '',
  MobNo2 VARCHAR(20) NOT NULL DEFAULT '',
  TelNo VARCHAR(20) NOT NULL DEFAULT '',
  FaxNo VARCHAR(20) NOT NULL DEFAULT '',
  EmailId VARCHAR(100) NOT NULL DEFAULT '',
  EmailId2 VARCHAR(100) NOT NULL DEFAULT '',
  Flag1 VARCHAR(5) NOT NULL DEFAULT '',
  Text1 VARCHAR(100) NOT NULL DEFAULT '',
  Flag2 VARCHAR(5) NOT NULL DEFAULT '',
  Text2 VARCHAR(100) NOT NULL DEFAULT '',
  LoginPwd VARCHAR(255) NOT NULL DEFAULT '',
  Info13 VARCHAR(100) NOT NULL DEFAULT '',
  Info14 VARCHAR(100) NOT NULL DEFAULT '',
  Info15 VARCHAR(100) NOT NULL DEFAULT '',
  Info16 VARCHAR(100) NOT NULL DEFAULT '',
  Info17 VARCHAR(100) NOT NULL DEFAULT '',
  Info18 VARCHAR(100) NOT NULL DEFAULT '',
  Info19 VARCHAR(100) NOT NULL DEFAULT '',
  Info20 VARCHAR(100) NOT NULL DEFAULT '',
  Info21 VARCHAR(100) NOT NULL DEFAULT '',
  Info22 VARCHAR(100) NOT NULL DEFAULT '',
  Info23 VARCHAR(100) NOT NULL DEFAULT '',
  Info24 VARCHAR(100) NOT NULL DEFAULT '',
  Info25 VARCHAR(100) NOT NULL DEFAULT '',
  Info26 VARCHAR(100) NOT NULL DEFAULT '',
  DedName VARCHAR(150) NOT NULL DEFAULT '',
  Info28 VARCHAR(100) NOT NULL DEFAULT '',
  Info29 VARCHAR(100) NOT NULL DEFAULT '',
  Info30 VARCHAR(100) NOT NULL DEFAULT '',
  PRIMARY KEY (Code_No)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;

-- The office's common portal password (first row), sealed as in ItdLoginTanU.
CREATE TABLE IF NOT EXISTS ItdLoginTanC (
  SrNo INT NOT NULL,
  LoginPwd VARCHAR(255) NOT NULL DEFAULT '',
  PRIMARY KEY (SrNo)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4;
